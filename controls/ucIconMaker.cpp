#include "controls/ucIconMaker.h"
#include "controls/Icons.h"

int ucIconMaker::MakeIcons()
{
    m_keys.clear();
    m_images.clear();
    for (const char *const letter : {"C", "T", "V", "P", "N", "F", "R", "L"}) {
        m_keys << QString::fromLatin1(letter);
        m_images << TreeIcon(m_keys.last());
    }
    return Count();
}
