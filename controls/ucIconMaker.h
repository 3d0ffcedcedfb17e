#pragma once
// The image list of the lists and trees: one icon for each kind of thing that a schema holds, drawn when it is asked
// for. Images are numbered from 1. Interface thread; nothing raises.

#include <QIcon>
#include <QList>
#include <QStringList>

class ucIconMaker
{
public:
    int MakeIcons(); // draws them, and gives their count
    int Count() const { return int(m_images.size()); }
    QString Key(int image) const { return m_keys.value(image - 1); } // a letter of TreeIcon
    QIcon Image(int image) const { return m_images.value(image - 1); }

private:
    QStringList m_keys;
    QList<QIcon> m_images;
};
