#include "sqltext/KeywordPlan.h"

#include "sqltext/Keywords.h"
#include "sqltext/TextSink.h"

#include <QBitArray>
#include <QStringMatcher>
#include <algorithm>

namespace {

// From this many literal keywords on it pays to look first which of them can occur at all.
constexpr qsizetype kManyLiterals = 16;

// The units and pairs of neighbours of a text, without regard to case; a pair shares its bit with others.
class Contents
{
public:
    Contents(const QString &text, const KeywordCodes &codes) : m_units(0x10000), m_pairs(0x10000)
    {
        for (const QString &part : {text, codes.keyword, codes.plain})
            Add(part);
        for (const QString &code : {codes.keyword, codes.plain}) {
            m_front += code.isEmpty() ? QChar() : Fold(code.front());
            m_back += code.isEmpty() ? QChar() : Fold(code.back());
        }
    }

    // False only when the keyword cannot stand in the text, nor arise when switches are put into it.
    bool MayHold(const QString &keyword) const
    {
        QChar before;
        for (qsizetype i = 0; i < keyword.size(); ++i) {
            const QChar c = Fold(keyword[i]);
            if (!m_units.testBit(c.unicode()))
                return false;
            const bool atSwitch = m_front.contains(c) || (i > 0 && m_back.contains(before));
            if (i > 0 && !atSwitch && !m_pairs.testBit(Pair(before, c)))
                return false;
            before = c;
        }
        return true;
    }

private:
    // Surrogates fold in pairs, so they all count as one unit.
    static QChar Fold(QChar c) { return c.isSurrogate() ? QChar(0xD800) : c.toCaseFolded(); }
    static qsizetype Pair(QChar a, QChar b) { return (a.unicode() * 31 + b.unicode()) & 0xFFFF; }

    void Add(const QString &text)
    {
        QChar before;
        for (const QChar unit : text) {
            const QChar c = Fold(unit);
            m_units.setBit(c.unicode());
            m_pairs.setBit(Pair(before, c));
            before = c;
        }
    }

    QBitArray m_units, m_pairs;
    QString m_front, m_back; // of the switches
};

// The walk by words counts on a switch that reads as one stretch and a blank, in which no keyword overlaps itself.
bool IsUsual(const KeywordCodes &codes)
{
    const auto usual = [](const QString &code) {
        return code.size() == 5 && code.startsWith(u"\\cf") && code[3].isDigit() && code[4] == u' ';
    };
    return usual(codes.keyword) && usual(codes.plain);
}

} // namespace

KeywordPlan::KeywordPlan(const QStringList &words) : KeywordPlan(words, std::vector<int>()) {}

KeywordPlan::KeywordPlan(const QStringList &words, const std::vector<int> &literal)
    : m_words(words), m_overlapping(literal)
{
    QStringList run;
    int runStart = 0;
    qsizetype letters = 0, overlaps = 0;
    const auto closeRun = [&] {
        if (!run.isEmpty())
            m_steps.push_back({std::make_shared<const WordTrie>(run, runStart), {}});
        run.clear();
        letters = overlaps = 0;
    };
    for (int order = 0; order < words.size(); ++order) {
        const QString &word = words[order];
        if (word.isEmpty())
            continue; // splitting on nothing leaves the text in one piece
        if (!WordTrie::IsOrdinary(word) || std::binary_search(literal.begin(), literal.end(), order)) {
            closeRun();
            m_steps.push_back({{}, word});
            ++m_literalCount;
            continue;
        }
        const qsizetype overlap = WordTrie::OverlapSize(word);
        // A word's index is its pass, and a run is coloured as one: so the words of a run must be consecutive.
        if (letters + word.size() > WordTrie::Limit || overlaps + overlap > WordTrie::Limit ||
            (!run.isEmpty() && runStart + run.size() != order))
            closeRun();
        if (run.isEmpty())
            runStart = order;
        run.append(word);
        letters += word.size();
        overlaps += overlap;
    }
    closeRun();
}

QString KeywordPlan::Colour(const QString &text, const KeywordCodes &codes) const
{
    if (text.isEmpty())
        return text;
    if (!IsUsual(codes)) {
        QString result = text;
        for (const QString &word : m_words)
            result = ColourKeyword(result, word, codes);
        return result;
    }
    if (m_literalCount >= kManyLiterals) {
        const QStringList relevant = Relevant(text, codes);
        if (relevant.size() < m_words.size())
            return KeywordPlan(relevant).Run(text, codes);
    }
    return Run(text, codes);
}

QString KeywordPlan::Run(const QString &text, const KeywordCodes &codes) const
{
    QString result = text;
    std::vector<int> overlapping;
    for (const Step &step : m_steps) {
        if (!step.run) {
            result = ColourKeyword(result, step.literal, codes);
            continue;
        }
        result = step.run->Colour(result, codes, overlapping);
        if (!overlapping.empty())
            break;
    }
    if (overlapping.empty())
        return result;
    // Once more, with these words as passes of their own. Fewer words are then left to be found overlapping.
    for (const Step &step : m_steps)
        if (step.run)
            step.run->Colour(text, codes, overlapping);
    overlapping.insert(overlapping.end(), m_overlapping.begin(), m_overlapping.end());
    std::sort(overlapping.begin(), overlapping.end());
    overlapping.erase(std::unique(overlapping.begin(), overlapping.end()), overlapping.end());
    return KeywordPlan(m_words, overlapping).Run(text, codes);
}

QStringList KeywordPlan::Relevant(const QString &text, const KeywordCodes &codes) const
{
    const Contents contents(text, codes);
    QStringList relevant;
    for (const QString &word : m_words)
        if (WordTrie::IsOrdinary(word) || contents.MayHold(word))
            relevant.append(word);
    return relevant;
}

QString ColourKeyword(const QString &text, const QString &keyword, const KeywordCodes &codes)
{
    if (keyword.isEmpty())
        return text;
    const QStringMatcher matcher(keyword, Qt::CaseInsensitive);
    qsizetype hit = matcher.indexIn(text);
    if (hit < 0)
        return text;
    TextSink out(text.size() + text.size() / 4);
    const QStringView source = text;
    qsizetype typedAt = -1; // runs over all occurrences, also those that overlap the one before
    qsizetype pieceStart = 0;
    while (hit >= 0) {
        out.Put(source.mid(pieceStart, hit - pieceStart));
        // The last character before is that of the piece, or of what was put in front of an empty piece.
        const bool left = out.Size() == 0 || IsWordEndAnyCase(out.Data()[out.Size() - 1]);
        pieceStart = hit + keyword.size();
        const qsizetype next = matcher.indexIn(text, pieceStart);
        const qsizetype pieceEnd = next < 0 ? text.size() : next;
        const bool right = pieceEnd == pieceStart || IsWordEndAnyCase(source[pieceStart]);
        typedAt = matcher.indexIn(text, typedAt + 1);
        const QString typed = MatchCase(source.mid(typedAt, keyword.size()).toString(), keyword);
        if (left && right)
            out.Put(codes.keyword);
        out.Put(typed);
        if (left && right)
            out.Put(codes.plain);
        hit = next;
    }
    out.Put(source.mid(pieceStart));
    return out.Take();
}
