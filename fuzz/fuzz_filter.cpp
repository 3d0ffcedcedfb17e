// Feeds any text to the recordset's filter: a filter or an error, nothing else.
#include "ado/Error.h"
#include "ado/Recordset.h"

#include <cstddef>
#include <cstdint>

using namespace ADODB;

namespace {

RecordsetPtr Rows()
{
    const RecordsetPtr rows = Recordset::Create();
    rows->Fields().Append(QStringLiteral("a"), adVarWChar, 20);
    rows->Fields().Append(QStringLiteral("n"), adInteger);
    rows->Fields().Append(QStringLiteral("day"), adDBDate);
    rows->Open();
    for (int i = 0; i < 3; ++i) {
        rows->AddNew();
        rows->Fields()[0].SetValue(QStringLiteral("text %1").arg(i));
        rows->Fields()[1].SetValue(i == 1 ? Value() : Value(i));
        rows->Fields()[2].SetValue(Date{2024, 1, i + 1});
        rows->Update();
    }
    return rows;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const RecordsetPtr rows = Rows();
    try {
        rows->SetFilter(QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size)));
        if (rows->RecordCount() > 3)
            __builtin_trap();
    } catch (const Error &) {
        // malformed, as most texts are
    }
    return 0;
}
