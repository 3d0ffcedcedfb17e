// Hierarchies in the result window: over real rows, and over made-up ones.

#include "ado/ConnectionString.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/FlexGrid.h"
#include "controls/LongTextBox.h"
#include "controls/RedrawLock.h"
#include "controls/StatusBar.h"
#include "controls/TabStrip.h"
#include "data/modMain.h"
#include "session/Pump.h"
#include "views/frmHirarchy.h"
#include "views/logic/DummyValue.h"
#include <QApplication>
#include <QPointer>
#include <QPushButton>

namespace {

// As the log shows it: a password is nobody's to read over a shoulder.
QString WithoutPassword(const QString &connectionString)
{
    QStringList parts;
    for (const ADODB::Attribute &attribute : ADODB::ParseConnectionString(connectionString)) {
        const bool secret = attribute.Key.compare(QLatin1String("PWD"), Qt::CaseInsensitive) == 0 ||
                            attribute.Key.compare(QLatin1String("Password"), Qt::CaseInsensitive) == 0;
        parts += secret ? attribute.Key + QStringLiteral("=***") : attribute.Raw;
    }
    return parts.join(u';');
}

} // namespace

void frmHirarchy::SetDataSource(const QString &strShape)
{
    const QPointer<frmHirarchy> alive(this);
    m_recordset.Cancel();
    m_shape = strShape;
    m_title = Caption();
    txtData->Clear();
    if (!isVisible() && !window()->isMinimized())
        ShowChild();
    const ADODB::ConnectionPtr connection = ADODB::Connection::Create();
    QString trouble;
    const bool opened = Attempt(
        [&] {
            const QString text = ADODB::GetShapeConnectionString(gConn ? gConn->ConnectionString() : QString());
            AppendMessage(WithoutPassword(text), QStringLiteral("Log"), false);
            if (!RunAbandonable(QStringLiteral("Opening Connection ... (Esc cancels)"),
                                [=] { connection->Open(text); }))
                throw ADODB::Error(ADODB::Fault::Cancelled);
        },
        &trouble);
    if (!alive)
        return;
    if (!opened)
        return ShapeFailed(trouble);
    setCursor(Qt::WaitCursor);
    m_recordset.OpenRecordset(strShape, connection, 3);
    cmdStop->setEnabled(true);
    ShowRunning(true);
    m_clock.start();
}

void frmHirarchy::ShapeFailed(const QString &words)
{
    ShowRunning(false);
    AppendMessage(QStringLiteral("Error: ") + words, QStringLiteral("Log"), true);
    ts->Select(2);
}

void frmHirarchy::ShapeOpened(const ADODB::RecordsetPtr &Rec)
{
    const QString shape = *m_shape;
    ShowRunning(false);
    AppendMessage(QStringLiteral("Mounting data shape:"), QStringLiteral("Log"), false);
    AppendMessage(shape, QStringLiteral("Log"), false);
    QString trouble;
    if (!Attempt([&] { ShowShape(Rec, shape); }, &trouble))
        ShapeFailed(trouble);
}

void frmHirarchy::ShowShape(const ADODB::RecordsetPtr &Rec, const QString &strShape)
{
    RedrawLock lock(this);
    SB->SetPanelText(1, strShape);
    mfg->SetDataSource(Rec);
    mfg->SetFixedRows(0);
    SpanColumns(true);
    ts->Select(1);
    if (isAncestorOf(QApplication::focusWidget()))
        mfg->setFocus(); // so that plus and minus open and close at once
}

void frmHirarchy::MountShape(const QString &strShape)
{
    QString trouble;
    const bool done = Attempt(
        [&] {
            const ADODB::ConnectionPtr connection = ADODB::Connection::Create();
            connection->Open(QStringLiteral("provider=msdatashape;data provider=none;"));
            AppendMessage(connection->ConnectionString(), QStringLiteral("Log"), false);
            AppendMessage(QStringLiteral("Mounting data shape:"), QStringLiteral("Log"), false);
            AppendMessage(strShape, QStringLiteral("Log"), false);
            const ADODB::RecordsetPtr rows = ADODB::Recordset::Create();
            rows->Open(strShape, connection, ADODB::adOpenStatic, ADODB::adLockOptimistic, -1);
            AppendMessage(QStringLiteral("Generating dumby data..."), QStringLiteral("Log"), false);
            GenerateDummyData(rows, 3);
            AppendMessage(strShape, QStringLiteral("Log"), false);
            ShowShape(rows, strShape);
        },
        &trouble);
    if (done)
        return;
    const QPointer<frmHirarchy> alive(this);
    MsgBox(QStringLiteral("Error: ") + trouble, mbExclamation, QStringLiteral("Error"), this);
    if (alive)
        AppendMessage(strShape, QStringLiteral("Log"), false);
}

void frmHirarchy::GenerateDummyData(const ADODB::RecordsetPtr &Rec, int Seed)
{
    Attempt([&] {
        const ADODB::Fields &fields = Rec->Fields();
        for (int row = 1; row <= Seed; ++row) {
            Rec->AddNew();
            for (int i = 0; i < fields.Count(); ++i)
                if (fields[i].Type() != ADODB::adChapter)
                    fields[i].SetValue(DummyValue(fields[i].Type()));
            Rec->Update();
            const ADODB::Field &last = fields[fields.Count() - 1];
            if (last.Type() != ADODB::adChapter)
                continue;
            const ADODB::Value value = last.GetValue();
            if (const ADODB::Chapter *children = value.As<ADODB::Chapter>())
                GenerateDummyData(*children, row);
        }
    });
}
