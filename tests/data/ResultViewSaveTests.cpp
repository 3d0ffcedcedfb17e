// Saving, copying and sorting of many rows in a plain result window: stopped, refused, and out of room.
#include "data/frmTree.h"
#include "data/modListView.h"
#include "frame/SaveDialog.h"
#include "tests/data/ResultView.h"
#include "tests/support/SmallDisk.h"
#include <QClipboard>
#include <sys/fsuid.h>
#include <sys/stat.h>

namespace {

// A folder in which nobody may make a file. Root may everywhere, so it files as somebody else while this lives.
class LockedFolder
{
public:
    explicit LockedFolder(const QString &path) : m_path(QFile::encodeName(path))
    {
        ::chmod(m_path.constData(), 0555);
        m_user = ::setfsuid(65534);
    }
    ~LockedFolder()
    {
        ::setfsuid(uid_t(m_user));
        ::chmod(m_path.constData(), 0755);
    }

private:
    QByteArray m_path;
    int m_user;
};

const char s_thousands[] = "with recursive c(i) as (select 1 union all select i + 1 from c where i < %1)"
                           " select i, 'name ' || (i * 7919 % %1) as n from c";

TEST_F(ResultViewTest, AFileInALockedFolderStaysWholeAndTheReasonIsSaid)
{
    OpenSample({});
    frmGrid *grid = ShowRecordset(Rows("select 1 as a"), "x");
    frmTree tree;
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("locked"));
    ::chmod(QFile::encodeName(m_folder.path()).constData(), 0755);
    const QString path = Path("locked/out.csv");
    Write(path, "former");
    const QString why = qt_error_string(EACCES);
    {
        const LockedFolder locked(Path("locked"));
        EXPECT_FALSE(grid->SaveFile(path));
        EXPECT_FALSE(tree.SaveFile(path));
        EXPECT_FALSE(WriteTextFile(nullptr, path, "new"));
    }
    EXPECT_EQ(Read(path), "former");
    ASSERT_EQ(m_boxes.Boxes.size(), 3);
    for (const MsgBoxRequest &box : m_boxes.Boxes) {
        EXPECT_EQ(box.Text, "Error: " + why);
        EXPECT_EQ(box.Icon, mbExclamation);
    }
    EXPECT_FALSE(m_shell.Hourglass);
    EXPECT_EQ(QDir(Path("locked")).entryList(QDir::Files | QDir::Hidden), QStringList{"out.csv"}); // nothing left over
}

TEST_F(ResultViewTest, AFullDiskLeavesTheFormerFileWholeAndIsSaid)
{
    OpenSample({});
    frmGrid *grid = ShowRecordset(Rows(QString(s_thousands).arg(20000)), "x");
    ASSERT_EQ(grid->lvResults->Count(), 20000);
    ASSERT_TRUE(QDir(m_folder.path()).mkdir("disk"));
    const QString path = Path("disk/out.csv");
    Write(path, "former");
    {
        const SmallDisk disk(65536);
        EXPECT_FALSE(grid->SaveFile(path));
        EXPECT_FALSE(WriteTextFile(nullptr, path, QString(200000, 'x')));
    }
    EXPECT_EQ(Read(path), "former");
    ASSERT_EQ(m_boxes.Boxes.size(), 2);
    for (const MsgBoxRequest &box : m_boxes.Boxes)
        EXPECT_EQ(box.Text, "Error: " + qt_error_string(EFBIG));
    EXPECT_EQ(QDir(Path("disk")).entryList(QDir::Files | QDir::Hidden), QStringList{"out.csv"});
    EXPECT_TRUE(grid->SaveFile(path)); // with room again
    EXPECT_TRUE(Read(path).endsWith("\r\n"));
    EXPECT_EQ(Read(path).count('\n'), 20001);
}

TEST_F(ResultViewTest, ALongSaveSaysSoAndEscapeKeepsTheFormerFile)
{
    OpenSample({});
    frmGrid *grid = ShowRecordset(Rows(QString(s_thousands).arg(50000)), "x");
    const QString path = Path("out.csv");
    Write(path, "former");
    QTimer::singleShot(0, grid, [&] {
        EXPECT_EQ(m_shell.Status(), "Saving ... (Esc stops)");
        EXPECT_TRUE(m_shell.Hourglass);
        QTest::keyClick(grid->lvResults, Qt::Key_Escape);
    });
    EXPECT_FALSE(grid->SaveFile(path));
    EXPECT_EQ(Read(path), "former");
    EXPECT_TRUE(m_boxes.Boxes.isEmpty());
    EXPECT_FALSE(m_shell.Hourglass);
    EXPECT_NE(m_shell.Status(), "Saving ... (Esc stops)");
    EXPECT_EQ(m_shell.Child("frmGrid"), grid); // Escape meant the saving, not the window
}

TEST_F(ResultViewTest, ALongCopyCanBeStopped)
{
    OpenSample({});
    frmGrid *grid = ShowRecordset(Rows(QString(s_thousands).arg(50000)), "x");
    grid->lvResults->SelectAllRows();
    QGuiApplication::clipboard()->setText("former");
    QTimer::singleShot(0, grid, [&] { QTest::keyClick(grid->lvResults, Qt::Key_Escape); });
    grid->mnuCopy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "former");
    grid->mnuCopy();
    const QString all = QGuiApplication::clipboard()->text();
    EXPECT_TRUE(all.startsWith("i, n\r\n1, name 7919\r\n"));
    EXPECT_EQ(all.count('\n'), 50000);
}

TEST_F(ResultViewTest, ALongSortLetsTheWindowsPaintAndCanBeStopped)
{
    OpenSample({});
    frmGrid *grid = ShowRecordset(Rows(QString(s_thousands).arg(50000)), "x");
    QTimer::singleShot(0, grid, [&] {
        EXPECT_EQ(m_shell.Status(), "Sorting ... (Esc stops)");
        QTest::keyClick(grid->lvResults, Qt::Key_Escape);
    });
    emit grid->lvResults->ColumnClick(1);
    EXPECT_FALSE(grid->lvResults->Sorted());
    EXPECT_EQ(grid->lvResults->Text(0), "1");
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, grid, [&] { ++ticks; });
    timer.start(1);
    emit grid->lvResults->ColumnClick(1);
    EXPECT_GT(ticks, 0);
    EXPECT_TRUE(grid->lvResults->Sorted());
    EXPECT_EQ(grid->lvResults->SortKey(), 1);
    EXPECT_EQ(grid->lvResults->SubItem(0, 1), "name 9999"); // text, not numbers
    EXPECT_EQ(grid->lvResults->SubItem(49999, 1), "name 0");
}

} // namespace
