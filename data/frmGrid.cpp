#include "data/frmGrid.h"
#include "controls/Attempt.h"
#include "controls/ControlError.h"
#include "controls/Dialogs.h"
#include "controls/ListView.h"
#include "controls/RedrawLock.h"
#include "controls/Skin.h"
#include "controls/StatusBar.h"
#include "data/frmTextOutput.h"
#include "data/modListView.h"
#include "frame/SaveDialog.h"
#include "frame/Shell.h"
#include "lang/Text.h"
#include "session/Pump.h"
#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QTime>
#include <QVBoxLayout>

namespace {

constexpr int kWindow = 2; // the mode that this window passes

double SecondsSinceMidnight()
{
    return QTime::currentTime().msecsSinceStartOfDay() / 1000.0;
}

QString OneLine(QString text)
{
    text.replace(QLatin1String("\r\n"), QLatin1String(" "));
    text.replace(QLatin1Char('\r'), QLatin1Char(' '));
    return text.replace(QLatin1Char('\n'), QLatin1Char(' '));
}

} // namespace

frmGrid::frmGrid(QWidget *parent) : ChildWindow(parent), m_uaRec(new UARecordset(this))
{
    Tag = QStringLiteral("1");
    SetCaption(QStringLiteral("Results"));
    lvResults = new ListView(this);
    lvResults->setObjectName(QStringLiteral("lvResults"));
    lvResults->setAccessibleName(QStringLiteral("Results"));
    lvResults->SetMultiSelect(true);
    SB = new StatusBar(this);
    SB->setObjectName(QStringLiteral("SB"));
    SB->AddPanel(sbrText, true); // the statement
    SB->AddPanel();
    SB->AddPanel(sbrText, false, 2100); // "RecordCount= n"
    SB->AddPanel(sbrText, false, 2500); // "QueryTime= hh:mm:ss"
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(lvResults, 1);
    column->addWidget(SB);
    resize(640, 400);
    setFocusProxy(lvResults);
    ApplySkin(this);

    connect(m_uaRec, &UARecordset::RecordsetOpened, this, &frmGrid::RecordsetOpened);
    connect(m_uaRec, &UARecordset::ErrorOccured, this, &frmGrid::ErrorOccured);
    connect(SB, &StatusBar::PanelClick, this, &frmGrid::ShowPanel);
    connect(lvResults, &ListView::ColumnClick, this, [this](int clicked) { SortListBy(lvResults, clicked); });
}

frmGrid::~frmGrid() = default;

void frmGrid::ShowRec(const QString &SQL, const ADODB::ConnectionPtr &Connection, const QString &Title)
{
    setCursor(Qt::WaitCursor);
    const QString line = OneLine(SQL);
    SB->SetPanelText(1, line);
    SetCaption((Title.isEmpty() ? Caption() : Title) + QLatin1Char('[') + lang::Left(line, 30) +
               QStringLiteral("...]"));
    m_start = SecondsSinceMidnight();
    Attempt([&] { m_uaRec->OpenRecordset(SQL, Connection, kWindow); });
}

void frmGrid::RecordsetOpened(const ADODB::RecordsetPtr &Recordset)
{
    // At midnight the difference turns negative, and shows so.
    SB->SetPanelText(4, QStringLiteral("QueryTime= ") + lang::FormatSeconds(SecondsSinceMidnight() - m_start));
    SB->SetPanelText(1, QStringLiteral("Loading Results..."));
    {
        const RedrawLock lock(this);
        Attempt([&] { Recordset->MoveLast(); });
        Attempt([&] { LoadColumns(Recordset, lvResults); });
        Attempt([&] { Recordset->MoveFirst(); });
        FillOptions options;
        options.Clear = true;
        Attempt([&] { FillList(lvResults, Recordset, options); });
        SpanColomns(false);
    }
    unsetCursor();
    SB->SetPanelText(3, QStringLiteral("RecordCount= ") + lang::CStr(lvResults->Count()));
}

void frmGrid::ErrorOccured(int, const QString &Description)
{
    unsetCursor();
    const QPointer<frmGrid> self(this);
    MsgBox(QStringLiteral("Error: ") + Description, mbExclamation, QStringLiteral("Error"), this);
    if (!self)
        return;
    if (UnloadOnError)
        CloseChild();
    else
        SB->SetPanelText(1, QStringLiteral("Error: ") + Description);
}

void frmGrid::SpanColomns(bool Force)
{
    SpanListColumns(lvResults, Force);
}

void frmGrid::RefreshForm(const QString &)
{
    CloseChild();
}

void frmGrid::Unload()
{
    // What still runs is cancelled, and nothing that arrives late reaches this window.
    m_uaRec->disconnect(this);
    if (m_uaRec->IsRunning())
        m_uaRec->Cancel();
}

void frmGrid::ShowPanel(int panel)
{
    auto *output = new frmTextOutput;
    output->SetText(SB->PanelText(panel)); // as RTF body, unescaped: a text with marks shows with them
    output->ShowChild();
}

void frmGrid::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        CloseChild();
    else
        ChildWindow::keyPressEvent(event);
}

namespace {

QStringList Captions(const ListView *list)
{
    QStringList captions;
    for (int i = 0; i < list->ColumnCount(); ++i)
        captions << list->ColumnText(i);
    return captions;
}

QStringList Cells(const ListView *list, qint64 row)
{
    QStringList cells;
    for (int i = 0; i < list->ColumnCount(); ++i)
        cells << list->SubItem(row, i);
    return cells;
}

} // namespace

std::optional<QString> frmGrid::CopyText(const std::function<bool()> &keepOn) const
{
    const auto comma = QStringLiteral(", ");
    const QPointer<const ListView> list(lvResults);
    QString text = Captions(list).join(comma);
    bool going = true;
    Attempt([&] {
        for (const qint64 row : list->SelectedRows()) {
            text += QStringLiteral("\r\n") + Cells(list, row).join(comma);
            going = (!keepOn || keepOn()) && list;
            if (!going)
                return;
        }
    });
    return going ? std::optional(text) : std::nullopt;
}

void frmGrid::mnuCopy()
{
    Breather breather(QStringLiteral("Copying ... (Esc stops)"));
    const std::optional<QString> text = CopyText([&] { return breather.Breathe(); });
    if (!text)
        return; // stopped: the clipboard keeps what it had
    QGuiApplication::clipboard()->clear();
    QGuiApplication::clipboard()->setText(*text);
}

void frmGrid::mnuSave()
{
    const QString path = AskSavePath(this, QStringLiteral("Save CSV File"),
                                     QStringLiteral("Comma Seperated File [*.csv]|*.csv|Text File [*.txt]|*.txt"),
                                     QStringLiteral("CSV"));
    if (!path.isEmpty())
        SaveFile(path);
}

bool frmGrid::SaveFile(const QString &Path)
{
    const QPointer<ListView> list(lvResults);
    Shell::Current().SetHourglass(true);
    bool saved = false;
    Attempt([&] { // a row that went away meanwhile ends it, and the former file stands
        saved = WriteTextLines(this, Path, 1 + list->Count(), [&](qint64 line) {
            if (!list)
                throw ControlError(ctlErrIndex, QStringLiteral("The list has gone."));
            return ListLine(line == 0 ? Captions(list) : Cells(list, line - 1));
        });
    });
    Shell::Current().SetHourglass(false);
    return saved;
}
