#include "sqltext/Rtf.h"

#include <array>

namespace {

void AppendEscaped(QString &out, QStringView text)
{
    qsizetype from = 0;
    const auto flush = [&](qsizetype to) { out.append(text.mid(from, to - from)); };
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char16_t c = text[at].unicode();
        if (c > u'\r' && c < u'\\') // most of a text: neither a line end nor a sign of the notation
            continue;
        if (c != u'\\' && c != u'{' && c != u'}' && c != u'\t' && c != u'\r' && c != u'\n')
            continue;
        flush(at);
        from = at + 1;
        switch (c) {
        case u'\t':
            out.append(u"\\tab ");
            break;
        case u'\r':
            if (from < text.size() && text[from] == u'\n')
                from = ++at + 1;
            [[fallthrough]];
        case u'\n':
            out.append(u"\r\n\\par ");
            break;
        default:
            out.append(u'\\');
            out.append(QChar(c));
        }
    }
    flush(text.size());
}

QString ColourTable(const std::vector<quint32> &colours)
{
    QString table = QStringLiteral("{\\colortbl ");
    for (const quint32 colour : colours) {
        if (colour != RtfAutomaticColour)
            table += QStringLiteral("\\red%1\\green%2\\blue%3")
                         .arg(colour >> 16 & 255)
                         .arg(colour >> 8 & 255)
                         .arg(colour & 255);
        table += u';';
    }
    return table + u'}';
}

// Writes the switches from one look to the next, each closed by a blank.
class LookWriter
{
public:
    explicit LookWriter(QString &out) : m_out(out) {}

    void To(const RtfRun &run)
    {
        if (run.bold != m_now.bold)
            m_out.append(run.bold ? u"\\b " : u"\\b0 ");
        if (run.italic != m_now.italic)
            m_out.append(run.italic ? u"\\i " : u"\\i0 ");
        if (run.colour != m_now.colour)
            m_out.append(Colour(run.colour));
        m_now = run;
    }

private:
    // A long text changes its colour a hundred thousand times, between a handful of colours.
    const QString &Colour(int colour)
    {
        if (colour < 0 || colour >= most)
            return m_other = QStringLiteral("\\cf%1 ").arg(colour);
        QString &known = m_colours[size_t(colour)];
        if (known.isEmpty())
            known = QStringLiteral("\\cf%1 ").arg(colour);
        return known;
    }

    static constexpr int most = 16;
    std::array<QString, most> m_colours;
    QString m_other;
    QString &m_out;
    RtfRun m_now;
};

} // namespace

QString RtfHeadLine(const QString &fontName)
{
    QString line = QStringLiteral("{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fnil\\fcharset0 ");
    AppendEscaped(line, fontName);
    return line + QStringLiteral(";}}");
}

QString RtfFontLine(int fontHalfPoints)
{
    return QStringLiteral("\\viewkind4\\uc1\\pard\\f0\\fs%1 ").arg(fontHalfPoints);
}

QString WriteRtf(const RtfDocument &document)
{
    const QStringView text = document.text;
    QString out = RtfHeadLine(document.fontName);
    out.reserve(out.size() + text.size() + text.size() / 8 + qsizetype(document.runs.size()) * 6 + 256);
    out.append(u"\r\n");
    out.append(ColourTable(document.colours));
    out.append(u"\r\n");
    out.append(RtfFontLine(document.fontHalfPoints));

    LookWriter look(out);
    qsizetype done = 0;
    for (const RtfRun &run : document.runs) {
        const qsizetype start = qBound(done, run.start, text.size());
        const qsizetype end = qBound(start, run.start + run.length, text.size());
        if (start > done) {
            look.To({});
            AppendEscaped(out, text.mid(done, start - done));
        }
        if (end > start) {
            look.To(run);
            AppendEscaped(out, text.mid(start, end - start));
        }
        done = end;
    }
    if (done < text.size()) {
        look.To({});
        AppendEscaped(out, text.mid(done));
    }
    out.append(u"\r\n\\par }");
    return out;
}
