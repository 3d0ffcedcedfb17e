// Random edits by every way in: the mirrored text is the document's, positions count CR LF as two, and the formats that
// are drawn are those of a slow model that keeps one style a character.
#include "RichTextBoxProbe.h"
#include <QRandomGenerator>

namespace {

struct Model
{
    QString text;            // CR LF
    std::vector<int> colour; // of each character; line ends have 0

    void Replace(qsizetype at, qsizetype length, const QString &added, int colour_)
    {
        text.replace(at, length, added);
        colour.erase(colour.begin() + at, colour.begin() + at + length);
        std::vector<int> fresh;
        for (const QChar ch : added)
            fresh.push_back(ch == u'\r' || ch == u'\n' ? 0 : colour_);
        colour.insert(colour.begin() + at, fresh.begin(), fresh.end());
    }
    // Plain text takes the colour of the character before it; what it has in common with what it replaces stays.
    void ReplacePlain(qsizetype at, qsizetype length, QString added)
    {
        const auto same = [&](qsizetype one, qsizetype other) { return text[one] == added[other]; };
        while (length > 0 && !added.isEmpty() && same(at, 0)) {
            added.remove(0, 1);
            ++at;
            --length;
        }
        while (length > 0 && !added.isEmpty() && same(at + length - 1, added.size() - 1)) {
            added.chop(1);
            --length;
        }
        Replace(at, length, added, at > 0 ? colour[size_t(at - 1)] : 0);
    }
    // The nearest position that does not tear a character in two.
    qsizetype Whole(qsizetype at) const
    {
        return at - (at > 0 && at < text.size() && text[at].isLowSurrogate() && text[at - 1].isHighSurrogate());
    }
    bool InsideLineEnd(qsizetype at) const
    {
        return at > 0 && at < text.size() && text[at] == u'\n' && text[at - 1] == u'\r';
    }
};

std::vector<int> Drawn(RichTextBox &box)
{
    box.ShowAllColours();
    std::vector<int> result(size_t(box.Text().size()), 0);
    qsizetype lineStart = 0;
    for (QTextBlock block = box.document()->begin(); block.isValid(); block = block.next()) {
        for (const auto &range : block.layout()->formats())
            for (int i = range.start; i < range.start + range.length; ++i)
                result.at(size_t(lineStart + i)) = range.format.foreground().color() == QColor(0, 0, 255) ? 1 : 2;
        lineStart += block.length() + 1;
    }
    return result;
}

QString RandomText(QRandomGenerator &random, bool lineFeeds)
{
    static const QStringList pieces = {QStringLiteral("a"),      QStringLiteral("select "),
                                       QStringLiteral("\u0436"), QStringLiteral("\U0001F600"),
                                       QStringLiteral("\t"),     QStringLiteral("x y z")};
    QString text;
    for (int i = random.bounded(4); i >= 0; --i) {
        text += pieces[random.bounded(int(pieces.size()))];
        if (random.bounded(4) == 0)
            text += lineFeeds ? QStringLiteral("\n") : QStringLiteral("\r\n");
    }
    return text;
}

} // namespace

TEST(RichTextBoxRandom, EditsKeepMirrorPositionsAndFormats)
{
    QRandomGenerator random(20260731);
    for (int round = 0; round < 40; ++round) {
        RichTextBox box;
        Model model;
        box.SetTextRTF(Rtf(QString()));
        for (int step = 0; step < 60; ++step) {
            qsizetype at = model.Whole(random.bounded(int(model.text.size()) + 1));
            qsizetype end = model.Whole(std::min<qsizetype>(at + random.bounded(12), model.text.size()));
            box.SetSelStart(at);
            box.SetSelLength(end - at);
            const bool empty = end == at;
            at -= model.InsideLineEnd(at);
            end = empty ? at : end + model.InsideLineEnd(end); // counted from the place that was asked for
            ASSERT_EQ(box.SelStart(), at);
            ASSERT_EQ(box.SelLength(), end - at);
            ASSERT_EQ(box.SelText(), model.text.mid(at, end - at));
            switch (random.bounded(4)) {
            case 0: {
                const QString added = RandomText(random, true);
                box.SetSelText(added);
                model.ReplacePlain(at, end - at, QString(added).replace(QStringLiteral("\n"), QStringLiteral("\r\n")));
                break;
            }
            case 1: {
                const int colour = random.bounded(1, 3);
                const QString added = RandomText(random, false);
                QString body = added;
                body.replace(QStringLiteral("\t"), QStringLiteral("\\tab "))
                    .replace(QStringLiteral("\r\n"), QStringLiteral("\r\n\\par "));
                box.SetSelRTF(Rtf(QStringLiteral("\\cf%1 ").arg(colour) + body));
                model.Replace(at, end - at, added, colour);
                break;
            }
            case 2:
                QTest::keyClick(&box, Qt::Key_Return);
                model.Replace(at, end - at, QStringLiteral("\r\n"), 0);
                break;
            default:
                QTest::keyClick(&box, Qt::Key_Backspace);
                if (end == at && at > 0) {
                    // one character, a whole line end, or a whole surrogate pair
                    const bool two = model.text[at - 1] == u'\n' || model.text[at - 1].isLowSurrogate();
                    model.Replace(at - (two ? 2 : 1), two ? 2 : 1, QString(), 0);
                } else if (end > at) {
                    model.Replace(at, end - at, QString(), 0);
                }
            }
            ASSERT_EQ(box.Text(), model.text) << "round " << round << " step " << step;
            ASSERT_EQ(DocumentText(box), model.text);
            ASSERT_EQ(Drawn(box), model.colour) << "round " << round << " step " << step;
            for (const int index : {1, 2})
                ASSERT_EQ(box.HasColour(index), std::count(model.colour.begin(), model.colour.end(), index) > 0);
        }
        const QString rtf = box.TextRTF();
        box.SetText(QString());
        box.SetTextRTF(rtf);
        ASSERT_EQ(box.Text(), model.text);
        ASSERT_EQ(Drawn(box), model.colour);
    }
}
