#include "movement/logic/FieldSplit.h"
#include <cstring>

namespace {

QByteArrayView Trimmed(QByteArrayView text)
{
    while (!text.isEmpty() && text.front() == ' ')
        text = text.sliced(1);
    while (!text.isEmpty() && text.back() == ' ')
        text.chop(1);
    return text;
}

} // namespace

void SplitFields(QByteArrayView line, QByteArrayView delimiter, std::vector<QByteArrayView> &fields)
{
    fields.clear();
    if (line.isEmpty())
        return;
    if (delimiter.isEmpty()) {
        fields.push_back(line);
        return;
    }
    const char *from = line.data();
    const char *const end = from + line.size();
    const auto width = size_t(delimiter.size());
    for (const char *at = from; at < end;) {
        at = static_cast<const char *>(std::memchr(at, delimiter.front(), size_t(end - at)));
        if (!at || size_t(end - at) < width)
            break;
        if (std::memcmp(at, delimiter.data(), width) != 0) {
            ++at;
            continue;
        }
        fields.emplace_back(from, at - from);
        from = at += width;
    }
    fields.emplace_back(from, end - from);
}

QByteArrayView StripQuotes(QByteArrayView text)
{
    const QByteArrayView inner = Trimmed(text);
    if (inner.size() < 3 || inner.front() != inner.back() || (inner.front() != '"' && inner.front() != '\''))
        return text;
    return inner.sliced(1, inner.size() - 2);
}

QString StripQuotes(const QString &text)
{
    const QByteArray utf8 = text.toUtf8();
    return QString::fromUtf8(StripQuotes(QByteArrayView(utf8)));
}

bool IsBlankLine(QByteArrayView line)
{
    return Trimmed(line).isEmpty();
}
