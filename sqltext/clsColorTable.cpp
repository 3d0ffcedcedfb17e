#include "sqltext/clsColorTable.h"

#include <algorithm>

clsColorTable gColorTable;
QString gColorTableString;

namespace {

struct ColorRow
{
    const char16_t *key;
    const char16_t *colorDef;
};

// Default text, keyword, double-quoted, single-quoted, comment, error text of the syntax check. The capital B and the
// closing backslash of the keyword row belong to the stored text.
constexpr ColorRow kRows[] = {
    {u"D", u"\\red145\\green195\\blue125"},  {u"KW", u"\\red125\\green145\\Blue195\\"},
    {u"DQ", u"\\red155\\green125\\blue195"}, {u"SQ", u"\\red195\\green175\\blue125"},
    {u"C", u"\\red165\\green175\\blue195"},  {u"ERROR", u"\\red247\\green205\\blue108"},
};

} // namespace

QString clsColorTable::GetColorTableString()
{
    QString result = QStringLiteral("{\\colortbl ");
    int number = 0;
    for (const Cell &cell : m_cells) {
        cell->Code = QStringLiteral("\\cf") + QString::number(number++) + u' ';
        result += cell->ColorDef + u';';
    }
    return result + u'}';
}

clsColorTable::Cell clsColorTable::Add(const QString &ColorDef, const QString &Key)
{
    if (Find(Key) != m_cells.cend())
        throw DuplicateKey();
    m_cells.push_back(std::make_shared<clsColorCell>(clsColorCell{Key, ColorDef, {}}));
    return m_cells.back();
}

clsColorTable::Cell clsColorTable::Item(const QString &key) const
{
    const auto hit = Find(key);
    return hit == m_cells.cend() ? Cell() : *hit;
}

void clsColorTable::Remove(const QString &key)
{
    const auto hit = Find(key);
    if (hit != m_cells.cend())
        m_cells.erase(hit);
}

clsColorTable::Cells::const_iterator clsColorTable::Find(const QString &key) const
{
    // An empty key is no key: such cells are reached by walking only.
    if (key.isEmpty())
        return m_cells.cend();
    return std::find_if(m_cells.cbegin(), m_cells.cend(),
                        [&](const Cell &cell) { return cell->Key.compare(key, Qt::CaseInsensitive) == 0; });
}

void InitColorTable()
{
    gColorTable = clsColorTable();
    for (const ColorRow &row : kRows)
        gColorTable.Add(QString::fromUtf16(row.colorDef), QString::fromUtf16(row.key));
    gColorTableString = gColorTable.GetColorTableString();
}
