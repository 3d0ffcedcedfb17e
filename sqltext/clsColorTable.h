#pragma once
// The colours of coloured text, as rows of an RTF colour table. Interface thread only.
//
// A cell is owned by its table and shared with whoever fetched it; an unknown key gives an empty pointer and raises
// nothing. Keys are compared without regard to case. Order of insertion is order in the table and gives each colour its
// switch.

#include <QString>

#include <memory>
#include <vector>

struct clsColorCell
{
    QString Key;      // key in the table
    QString ColorDef; // definition as it stands in \colortbl, without the closing semicolon
    QString Code;     // switch that turns the colour on, set by GetColorTableString
};

class clsColorTable
{
public:
    using Cell = std::shared_ptr<clsColorCell>;
    using Cells = std::vector<Cell>;

    // The \colortbl group of all cells in order; gives each cell its Code.
    QString GetColorTableString();
    // A new cell behind the others, without a key when `Key` is empty. A key that is taken raises DuplicateKey.
    Cell Add(const QString &ColorDef, const QString &Key);
    Cell Item(const QString &key) const;
    qsizetype Count() const { return qsizetype(m_cells.size()); }
    void Remove(const QString &key); // an unknown key changes nothing
    // The cells in order of insertion, as they stand now: a later Add or Remove does not disturb the walk.
    Cells NewEnum() const { return m_cells; }

    Cells::const_iterator begin() const { return m_cells.cbegin(); }
    Cells::const_iterator end() const { return m_cells.cend(); }

    struct DuplicateKey
    {
    };

private:
    Cells::const_iterator Find(const QString &key) const;

    Cells m_cells;
};

// The application's table and its \colortbl text. Both are filled by InitColorTable, once at the start; a further call
// starts over with the same rows.
extern clsColorTable gColorTable;
extern QString gColorTableString;
void InitColorTable();
