#include "visual/frmDiagram.h"

#include "controls/Attempt.h"
#include "controls/CommandBar.h"
#include "controls/Dialogs.h"
#include "controls/Skin.h"
#include "controls/Twips.h"
#include "controls/clsCaptureWindow.h"
#include "data/modMain.h"
#include "frame/SaveDialog.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "visual/DiagramHost.h"
#include "visual/frmJoin.h"
#include "visual/ucTableMap.h"
#include <QApplication>
#include <QClipboard>
#include <QPainter>
#include <QPointer>
#include <QPrinter>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>

namespace {

constexpr int kRightButton = 2;

DiagramHost *g_host = nullptr;

struct Tool
{
    const char *key; // behind the three letters of the toolbar
    void (*run)(frmDiagram &form);
};

bool IsDown(const QString &key)
{
    const CommandBar *bar = Shell::Current().Commands();
    return bar && bar->HasButton(key) && bar->Checked(key);
}

} // namespace

DiagramHost::~DiagramHost()
{
    if (g_host == this)
        g_host = nullptr;
}
DiagramHost &DiagramHost::Current()
{
    static DiagramHost nobody;
    return g_host ? *g_host : nobody;
}
void DiagramHost::Install(DiagramHost *host)
{
    g_host = host;
}
void DiagramHost::SetDiagramMenu(bool) {}

frmDiagram::frmDiagram(QWidget *parent) : ChildWindow(parent)
{
    Tag = QStringLiteral("1");
    SetCaption(QStringLiteral("Diagram"));
    TableMap = new ucTableMap(this);
    TableMap->setObjectName(QStringLiteral("TableMap"));
    TableMap->ShowStar = false;
    TableMap->AllowCheckBoxes(false);
    AskWithJoinDialog(*TableMap);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(TableMap);
    resize(720, 480);
    setFocusProxy(TableMap);
    ApplySkin(this);
    connect(TableMap, &ucTableMap::MouseUp, this, [this](int button, int, double x, double y, bool onTable) {
        if (button == kRightButton && !onTable)
            Shell::Current().ShowMenu(QStringLiteral("mnuDiagram"),
                                      TableMap->Hwnd()->mapToGlobal(QPoint(ToPixels(qint64(x)), ToPixels(qint64(y)))));
    });
}

void frmDiagram::showEvent(QShowEvent *event)
{
    ChildWindow::showEvent(event);
    if (m_asked)
        return;
    m_asked = true;
    QTimer::singleShot(0, this, [this] { Attempt([&] { mnuAddTable(); }); }); // the window shows first
}

void frmDiagram::Activated()
{
    m_active = true;
    SetMenuValue(true);
    SetStatus(QStringLiteral("New Diagram Window"));
}

void frmDiagram::Deactivated()
{
    m_active = false;
    SetMenuValue(false);
    SetStatus(QStringLiteral("Database Diagram"));
}

void frmDiagram::Unload()
{
    if (m_active) // another diagram may be the active one
        Deactivated();
}

void frmDiagram::SetMenuValue(bool Value)
{
    DiagramHost::Current().SetDiagramMenu(Value);
}

void frmDiagram::RefreshForm(const QString &)
{
    const QPointer<frmDiagram> self(this);
    mnuSave();
    if (self)
        TableMap->ClearMap();
}

void frmDiagram::mnuAddTable()
{
    TableMap->AddNewTable();
}

void frmDiagram::ToolBar(const QString &buttonKey)
{
    if (!IsConnected(false)) {
        MsgBox(QStringLiteral("Your connection has failed. Operation cannot be executed."), mbExclamation,
               QStringLiteral("Connection"), this);
        return;
    }
    // "ALL" has no row: nothing is behind it in any release.
    static constexpr Tool tools[] = {
        {"New", [](frmDiagram &) { (new frmDiagram)->ShowChild(); }},
        {"Table", [](frmDiagram &form) { form.mnuAddTable(); }},
        {"Linked", [](frmDiagram &form) { form.TableMap->AddLinked(); }},
        {"All", [](frmDiagram &form) { form.TableMap->AddAll(); }},
        {"B2F", [](frmDiagram &form) { form.TableMap->BringToTop(); }},
        {"S2B", [](frmDiagram &form) { form.TableMap->SendToBottom(); }},
        {"Remove", [](frmDiagram &form) { form.TableMap->RemoveCurrentTable(); }},
        {"B&W",
         [](frmDiagram &form) {
             if (IsDown(QStringLiteral("DTBB&W")))
                 form.TableMap->MakeGray();
             else
                 form.TableMap->MakeColor();
             form.TableMap->RefreshMap();
         }},
        {"Snapshot", [](frmDiagram &form) { form.SnapShot(); }},
        {"Clear", [](frmDiagram &form) { form.Clear(); }},
    };
    const QString key = lang::Mid(buttonKey, 4);
    for (const Tool &tool : tools) {
        if (key == QLatin1String(tool.key)) {
            Attempt([&] { tool.run(*this); });
            return;
        }
    }
}

void frmDiagram::Clear()
{
    const QPointer<frmDiagram> self(this);
    const int answer =
        MsgBox(QStringLiteral("Are you sure you want to clear this diagram?"), mbYesNo, QStringLiteral("Clear"), this);
    if (self && answer == mbYes)
        TableMap->ClearMap();
}

void frmDiagram::mnuSave()
{
    const QPointer<frmDiagram> self(this);
    const QString path =
        AskSavePath(this, QStringLiteral("Save"), QStringLiteral("Bitmap [*.bmp]|*.bmp"), QStringLiteral("bmp"));
    if (!self || path.isEmpty())
        return;
    TableMap->Hwnd()->repaint(); // the dialog is gone from it
    QString why;
    if (!clsCaptureWindow::SaveBitmap(clsCaptureWindow::CaptureClientfromHwnd(TableMap->Hwnd()), path, why))
        MsgBox(QStringLiteral("Error: ") + why, mbExclamation, QStringLiteral("Error"), this);
}

void frmDiagram::mnuPrint()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(Caption());
    const QPointer<frmDiagram> self(this);
    if (PrintDialog(printer, this) && self)
        PrintTo(printer);
}

// One page, filled by the picture; how it lies and how often it comes the dialog has said.
bool frmDiagram::PrintTo(QPrinter &printer)
{
    const QPixmap picture = clsCaptureWindow::CaptureClientfromHwnd(TableMap->Hwnd());
    QPainter page;
    if (picture.isNull() || !page.begin(&printer))
        return false;
    page.setRenderHint(QPainter::SmoothPixmapTransform);
    page.drawPixmap(QRect(QPoint(0, 0), printer.pageRect(QPrinter::DevicePixel).size().toSize()), picture);
    return page.end();
}

void frmDiagram::SnapShot()
{
    QGuiApplication::clipboard()->clear();
    clsCaptureWindow::ToClipboard(clsCaptureWindow::CaptureClientfromHwnd(TableMap->Hwnd()));
    QApplication::beep();
}
