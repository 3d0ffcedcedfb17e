#include "controls/EditorContent.h"

#include <algorithm>

static bool SplitsLineEnd(QStringView text, qsizetype position)
{
    return position > 0 && position < text.size() && text[position - 1] == u'\r' && text[position] == u'\n';
}

TextDifference CompareTexts(QStringView before, QStringView after)
{
    const qsizetype shorter = std::min(before.size(), after.size());
    const qsizetype head =
        std::mismatch(before.begin(), before.begin() + shorter, after.begin()).first - before.begin();
    qsizetype tail = 0;
    while (tail < shorter - head && before[before.size() - 1 - tail] == after[after.size() - 1 - tail])
        ++tail;
    const qsizetype start = SplitsLineEnd(before, head) || SplitsLineEnd(after, head) ? head - 1 : head;
    if (SplitsLineEnd(before, before.size() - tail) || SplitsLineEnd(after, after.size() - tail))
        --tail;
    return {start, before.size() - start - tail, after.size() - start - tail};
}

EditorContent::EditorContent(const RtfDocument &document, const QString &text)
    : former(text), colours(document.colours), fontName(document.fontName), fontHalfPoints(document.fontHalfPoints)
{
    const QString whole = EditorText::Normalised(document.text);
    content.Reset(whole, document);
    difference = CompareTexts(former, whole);
    now = whole.mid(difference.start, difference.newLength);
}
