// The report as a file: as many pages as it says, each once.
#include "tests/controls/MakeRecordset.h"
#include "tests/support/DialogDouble.h"
#include "tests/support/ShellDouble.h"
#include "views/drReport.h"
#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

qsizetype PagesIn(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return -1;
    return file.readAll().count("/Type /Page\n");
}

TEST(ReportPages, TheFileHasAsManyAsAreTold)
{
    const ShellDouble shell;
    const DialogDouble dialogs;
    const QTemporaryDir folder;
    for (const qint64 rows : {0, 1, 200, 1000}) {
        drReport report(MakeRows(rows), {{0, 1200, "Id"}, {1200, 3000, "Name"}}, QStringLiteral("SQL: x"));
        const QString path = folder.filePath(QStringLiteral("%1.pdf").arg(rows));
        ASSERT_TRUE(report.SavePdf(path));
        EXPECT_EQ(PagesIn(path), report.Pages()) << rows;
        EXPECT_EQ(report.lblPages->text(),
                  report.Pages() == 1 ? QStringLiteral("1 page") : QStringLiteral("%1 pages").arg(report.Pages()));
        EXPECT_FALSE(QFile::exists(path + QStringLiteral(".part")));
    }
}

} // namespace
