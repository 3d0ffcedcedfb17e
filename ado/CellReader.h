#pragma once
// The text of one cell in pieces, so that nobody has to make the whole of a huge value at once.
//
// The pieces joined are what Recordset::CellText gives; no piece ends inside of a character. A reader shares ownership
// of the recordset and looks the cell up anew for each piece: belongs to the recordset's thread. Raises nothing: a cell
// that has gone ends its text.

#include "ado/Recordset.h"

namespace ADODB {

class CellReader
{
public:
    CellReader() = default; // at its end
    CellReader(RecordsetPtr recordset, qint64 row, int column);
    explicit CellReader(QString text); // a text that is there already

    QString Next(qint64 most); // at most so many characters, 4 at least; "" at the end
    bool AtEnd() const { return m_at >= m_size; }
    qint64 Size() const { return m_size; } // of the whole, by the measure of At
    qint64 At() const { return m_at; }     // what has been read; bytes or characters, as the cell keeps them

private:
    enum class Kind
    {
        Text,
        Utf8,
        Bytes
    };
    QByteArrayView View() const;

    RecordsetPtr m_recordset;
    qint64 m_row = 0;
    int m_column = 0;
    Kind m_kind = Kind::Text;
    QString m_text; // of Kind::Text
    qint64 m_size = 0, m_at = 0;
};

// The first characters of a cell's text, at most `most`. Raises as CellText does.
QString CellStart(const Recordset &recordset, qint64 row, int column, qint64 most);

} // namespace ADODB
