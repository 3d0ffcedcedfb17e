// The diagram window: its first table, the keys of its toolbar, saving, printing, snapshots.

#include "controls/CommandBar.h"
#include "data/frmGetSelection.h"
#include "tests/data/House.h"
#include "visual/DiagramHost.h"
#include "visual/frmDiagram.h"
#include "visual/ucTableMap.h"
#include <QClipboard>
#include <QImage>
#include <QMouseEvent>
#include <QPrinter>
#include <QRegularExpression>

namespace {

struct HostDouble : DiagramHost
{
    HostDouble() { Install(this); }
    QList<bool> States;
    void SetDiagramMenu(bool on) override { States << on; }
};

class Diagram : public DataTest
{
protected:
    HostDouble host;

    void SetUp() override
    {
        OpenSample({"CREATE TABLE Orders (ID int PRIMARY KEY, CustomerID int)",
                    "CREATE TABLE Items (ID int, OrderID int REFERENCES Orders (ID))"});
    }
    // A diagram with its first table, as the picker gives it; without a name the picker is cancelled.
    frmDiagram *Show(const QString &first = "Orders")
    {
        auto *form = new frmDiagram;
        const int met = m_dialogs;
        WithDialog([first](QWidget *dialog) {
            auto *picker = qobject_cast<frmGetSelection *>(dialog);
            ASSERT_NE(picker, nullptr);
            if (!first.isEmpty())
                picker->SelectText(first);
            Click(dialog, first.isEmpty() ? "cmdCancel" : "cmdOK");
        });
        form->ShowChild();
        EXPECT_TRUE(Until([&] { return m_dialogs > met && !QApplication::activeModalWidget(); }));
        EXPECT_TRUE(Until([&] { return form->TableMap->CurrentTable() != 0 || first.isEmpty(); }));
        return form;
    }
    static size_t Count(const frmDiagram *form) { return form->TableMap->Tables().Numbers().size(); }
};

} // namespace

TEST_F(Diagram, AsksForItsFirstTableAtOnceAndShowsItWithoutStarAndChecks)
{
    const frmDiagram *form = Show();
    ASSERT_EQ(Count(form), 1u);
    EXPECT_EQ(form->TableMap->lvTable(1)->Items.front().Text, "ID");
    EXPECT_FALSE(form->TableMap->Tables().CheckBoxes);
    EXPECT_EQ(form->Caption(), "Diagram");
    EXPECT_EQ(form->Tag, "1");
    EXPECT_TRUE(form->MenuSettings().CanSave && form->MenuSettings().CanPrint);
    EXPECT_EQ(Count(Show("")), 0u); // cancelled: an empty window, and a second one
}

TEST_F(Diagram, SetsTheMenuAndTheStatusWhileItIsActive)
{
    frmDiagram *form = Show("");
    form->Activated();
    EXPECT_EQ(m_shell.Status(), "New Diagram Window");
    form->Deactivated();
    EXPECT_EQ(m_shell.Status(), "Database Diagram");
    EXPECT_EQ(host.States, QList<bool>({true, false}));
    form->Unload(); // another diagram may be the active one
    EXPECT_EQ(host.States.size(), 2);
    form->Activated();
    form->Unload();
    EXPECT_EQ(host.States, QList<bool>({true, false, true, false}));
}

TEST_F(Diagram, RunsTheKeysOfItsToolbar)
{
    CommandBar bar;
    bar.AddToolbar("DTB");
    bar.AddButton("DTB", "DTBB&W", "Black and White", cbrCheck);
    m_shell.Bar = &bar;
    frmDiagram *form = Show();
    ucTableMap *map = form->TableMap;
    form->ToolBar("DTBLinked");
    EXPECT_EQ(Count(form), 2u);
    EXPECT_EQ(map->Joins().Rows().size(), 1u);
    form->ToolBar("DTBAll");
    EXPECT_EQ(Count(form), 2u);
    form->ToolBar("DTBALL");
    form->ToolBar("DTB");
    form->ToolBar("");
    EXPECT_EQ(Count(form), 2u);
    const int current = map->CurrentTable();
    form->ToolBar("DTBS2B");
    EXPECT_EQ(map->Tables().Stack().front(), current);
    form->ToolBar("DTBB2F");
    EXPECT_EQ(map->Tables().Stack().back(), current);
    const auto ground = [&] { return map->Hwnd()->grab().toImage().pixelColor(1, 1); };
    bar.SetChecked("DTBB&W", true);
    form->ToolBar("DTBB&W");
    EXPECT_EQ(ground(), QColor(Qt::white));
    bar.SetChecked("DTBB&W", false);
    form->ToolBar("DTBB&W");
    EXPECT_EQ(ground(), SkinColour(1));
    form->ToolBar("DTBRemove"); // no table's menu was opened yet
    EXPECT_EQ(Count(form), 2u);
    QGuiApplication::clipboard()->clear();
    form->ToolBar("DTBSnapshot");
    EXPECT_EQ(QGuiApplication::clipboard()->image().size(), map->Hwnd()->size());
    m_boxes.Answers << mbNo;
    form->ToolBar("DTBClear");
    EXPECT_EQ(m_boxes.LastText(), "Are you sure you want to clear this diagram?");
    EXPECT_EQ(m_boxes.LastTitle(), "Clear");
    EXPECT_EQ(Count(form), 2u);
    m_boxes.Answers << mbYes;
    form->ToolBar("DTBClear");
    EXPECT_EQ(Count(form), 0u);
    const auto windows = m_shell.Children().size();
    WithDialog([](QWidget *dialog) { Click(dialog, "cmdCancel"); });
    form->ToolBar("DTBNew");
    EXPECT_EQ(m_shell.Children().size(), windows + 1);
    const int met = m_dialogs;
    EXPECT_TRUE(Until([&] { return m_dialogs > met; }));
    WithDialog([](QWidget *dialog) {
        qobject_cast<frmGetSelection *>(dialog)->SelectText("Items");
        Click(dialog, "cmdOK");
    });
    form->ToolBar("DTBTable");
    EXPECT_EQ(Count(form), 1u);
}

TEST_F(Diagram, SaysThatTheConnectionHasFailed)
{
    frmDiagram *form = Show();
    gConn.reset();
    for (const char *key : {"DTBAll", "DTBClear", "DTBNew", "DTBB2F"}) {
        form->ToolBar(key);
        EXPECT_EQ(m_boxes.LastText(), "Your connection has failed. Operation cannot be executed.");
        EXPECT_EQ(m_boxes.LastTitle(), "Connection");
        EXPECT_EQ(m_boxes.Boxes.last().Icon, mbExclamation);
    }
    EXPECT_EQ(m_boxes.Boxes.size(), 4);
    EXPECT_EQ(Count(form), 1u);
}

TEST_F(Diagram, SavesBeforeItClearsForAnotherConnection)
{
    frmDiagram *form = Show();
    const QString path = Path("map.bmp");
    m_boxes.Files << path;
    form->RefreshForm("Another");
    ASSERT_EQ(m_boxes.FileDialogs.size(), 1);
    EXPECT_EQ(m_boxes.FileDialogs[0].Filter, "Bitmap [*.bmp]|*.bmp");
    EXPECT_TRUE(m_boxes.FileDialogs[0].Save);
    const QImage saved(path);
    EXPECT_EQ(saved.size(), form->TableMap->Hwnd()->size());
    EXPECT_EQ(Count(form), 0u);
    const QImage empty = form->TableMap->Hwnd()->grab().toImage();
    EXPECT_NE(saved.convertToFormat(QImage::Format_RGB32), empty.convertToFormat(QImage::Format_RGB32));
    form->RefreshForm("Another"); // the dialog is cancelled
    EXPECT_EQ(m_boxes.FileDialogs.size(), 2);
}

TEST_F(Diagram, KeepsTheFormerFileWhenTheNewOneCannotBeWritten)
{
    frmDiagram *form = Show();
    m_boxes.Files << "/dev/full/map.bmp";
    form->mnuSave();
    EXPECT_EQ(m_boxes.LastTitle(), "Error");
    EXPECT_TRUE(m_boxes.LastText().startsWith("Error: "));
    EXPECT_GT(m_boxes.LastText().size(), 10);
}

TEST_F(Diagram, PrintsThePictureOverTheWholePage)
{
    frmDiagram *form = Show();
    form->mnuPrint(); // cancelled
    EXPECT_EQ(m_boxes.PrintDialogs, 1);
    for (const auto orientation : {QPageLayout::Portrait, QPageLayout::Landscape}) {
        QPrinter printer;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(Path("map.pdf"));
        printer.setPageOrientation(orientation);
        ASSERT_TRUE(form->PrintTo(printer));
        const QByteArray pdf = Read(Path("map.pdf"));
        EXPECT_TRUE(pdf.startsWith("%PDF"));
        EXPECT_GT(pdf.size(), 2000);
        const auto box = QRegularExpression("MediaBox \\[0 0 ([0-9.]+) ([0-9.]+)").match(QString::fromLatin1(pdf));
        ASSERT_TRUE(box.hasMatch());
        EXPECT_EQ(box.captured(1).toDouble() > box.captured(2).toDouble(), orientation == QPageLayout::Landscape);
    }
}

TEST_F(Diagram, PopsUpTheMainMenuOverItsGround)
{
    frmDiagram *form = Show("");
    QWidget *surface = form->TableMap->Hwnd();
    QTest::mouseClick(surface, Qt::RightButton, {}, {300, 300});
    EXPECT_EQ(m_shell.Menus, QStringList{"mnuDiagram"});
    QTest::mouseClick(surface, Qt::LeftButton, {}, {300, 300});
    EXPECT_EQ(m_shell.Menus, QStringList{"mnuDiagram"});
}

// With BRINDLEWICK_GALLERY set to a folder the window's picture is kept there, to be looked at.
TEST_F(Diagram, ShowsASchema)
{
    for (const char *sql :
         {"CREATE TABLE Customers (CustomerID int PRIMARY KEY, Name text, City text)",
          "CREATE TABLE Products (ProductID int PRIMARY KEY, Name text, Price int)",
          "CREATE TABLE Lines (LineID int, ID int REFERENCES Orders (ID), ProductID int REFERENCES Products "
          "(ProductID), "
          "Quantity int)",
          "CREATE TABLE Invoices (InvoiceID int, ID int REFERENCES Orders (ID), CustomerID int REFERENCES Customers "
          "(CustomerID))"})
        ASSERT_NO_THROW(gConn->Execute(sql)) << sql;
    frmDiagram *form = Show("");
    form->resize(760, 480);
    form->ToolBar("DTBAll");
    ucTableMap *map = form->TableMap;
    const QMap<QString, QPoint> places = {{"Orders", {280, 150}},   {"Items", {30, 40}},      {"Lines", {540, 40}},
                                          {"Products", {540, 240}}, {"Customers", {40, 270}}, {"Invoices", {290, 310}}};
    const auto send = [&](QEvent::Type type, const QPoint &at) {
        QWidget *surface = map->Hwnd();
        QMouseEvent event(type, at, surface->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(surface, &event);
    };
    for (int index : map->Tables().Numbers()) {
        const QPoint to = places.value(map->lvTable(index)->Tag, {300, 20});
        for (int i = 0; i < 12; ++i) // to the front, so that its heading is free
            QTest::keyClick(map->Hwnd(), Qt::Key_Backtab, Qt::ShiftModifier);
        for (int i = 1; i < index; ++i)
            QTest::keyClick(map->Hwnd(), Qt::Key_Tab);
        ASSERT_EQ(map->CurrentTable(), index);
        send(QEvent::MouseButtonPress, map->TableRect(index).topLeft() + QPoint(20, 8));
        send(QEvent::MouseMove, {380, 240});
        send(QEvent::MouseMove, to);
        send(QEvent::MouseButtonRelease, to);
        EXPECT_EQ(map->TableRect(index).topLeft(), to);
    }
    EXPECT_EQ(Count(form), 6u);
    EXPECT_EQ(map->Joins().Rows().size(), 5u);
    const QString folder = qEnvironmentVariable("BRINDLEWICK_GALLERY");
    if (!folder.isEmpty()) {
        EXPECT_TRUE(form->grab().save(QDir(folder).filePath("diagram.png")));
    }
}
