#include "analyzer/frmScriptMask.h"

#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/RichTextBox.h"
#include "controls/Skin.h"
#include "data/ServerName.h"
#include "data/clsConns.h"
#include "data/modMain.h"
#include "frame/Settings.h"
#include "frame/Shell.h"
#include "session/Pump.h"
#include "sqltext/TextToCode.h"
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr const char *kMasks[] = {
    "rsData.Fields(\"@\").Value = txt@", "rsData(\"@\") = txt@", "rsData!@ = txt@", "txt@.Text = rsData!@",
    "rsDestination!@ = rsSource!@",
};
const QString kMaskSetting = QStringLiteral("Mask");

} // namespace

frmScriptMask::frmScriptMask(QWidget *parent) : ChildWindow(parent)
{
    Tag = QStringLiteral("1");
    SetCaption(QStringLiteral("Mask Script"));
    // The letters are ones that no menu of the main window has: Alt with one of both would do neither.
    auto *label = new QLabel(QStringLiteral("&Mask"), this);
    cmbMask = new QComboBox(this);
    cmbMask->setObjectName(QStringLiteral("cmbMask"));
    cmbMask->setAccessibleName(QStringLiteral("Mask"));
    cmbMask->setEditable(true);
    cmbMask->setInsertPolicy(QComboBox::NoInsert);
    cmbMask->setCompleter(nullptr);
    for (const char *mask : kMasks)
        cmbMask->addItem(QString::fromLatin1(mask));
    cmbMask->setEditText(GetSetting(kMaskSetting, QString::fromLatin1(kMasks[0])));
    label->setBuddy(cmbMask);
    auto *note = new QLabel(
        QStringLiteral("* the [@] sign is used as a wild card that will be replaced by the field name"), this);
    note->setObjectName(QStringLiteral("lblNote"));
    note->setWordWrap(true);
    txtCode = new RichTextBox(this);
    txtCode->setObjectName(QStringLiteral("txtCode"));
    txtCode->setAccessibleName(QStringLiteral("Code"));
    txtCode->setReadOnly(true);
    txtCode->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    txtCode->setTabChangesFocus(true);
    cmdRun = new QPushButton(QStringLiteral("&Run"), this);
    cmdRun->setObjectName(QStringLiteral("cmdRun"));
    cmdClipBoard = new QPushButton(QStringLiteral("C&lipboard"), this);
    cmdClipBoard->setObjectName(QStringLiteral("cmdClipBoard"));

    auto *column = new QVBoxLayout(this);
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(cmbMask, 1);
    row->addWidget(cmdRun);
    row->addWidget(cmdClipBoard);
    column->addLayout(row);
    column->addWidget(note);
    column->addWidget(txtCode, 1);
    setFocusProxy(cmbMask);
    resize(600, 360);

    for (QWidget *widget : {static_cast<QWidget *>(cmbMask), static_cast<QWidget *>(txtCode),
                            static_cast<QWidget *>(cmdRun), static_cast<QWidget *>(cmdClipBoard)})
        widget->installEventFilter(this);
    connect(cmdRun, &QPushButton::clicked, this, &frmScriptMask::Run);
    connect(cmdClipBoard, &QPushButton::clicked, this, &frmScriptMask::Copy);
    ApplySkin(this);
}

void frmScriptMask::RefreshForm(const QString &name)
{
    if (m_table.isEmpty() || !gConns().Item(name)) {
        m_table = name;
        SetCaption(QStringLiteral("Mask Script: ") + name);
        return;
    }
    // The new connection may lack the table. The code of the former one then stays, and no box stops the connecting.
    const QPointer<frmScriptMask> self(this);
    QString trouble;
    if (!Generate(&trouble) && self)
        SetStatus(QStringLiteral("Error: ") + trouble);
}

void frmScriptMask::SetObject(const ADODB::ObjectName &object)
{
    m_object = object;
    m_objectOn = gConn;
}

bool frmScriptMask::Generate(QString *trouble)
{
    const QPointer<frmScriptMask> self(this);
    QStringList names;
    const int turn = ++m_turn;
    m_running = true;
    const ADODB::ConnectionPtr connection = gConn;
    const bool picked = connection && m_objectOn.lock() == connection && m_object.Name == m_table;
    const bool read = Attempt(
        [&] {
            if (!connection)
                throw ADODB::Error(ADODB::Fault::ObjectClosed);
            const QString name = picked ? ServerName(connection, m_object) : ServerName(connection, m_table);
            const ADODB::RecordsetPtr empty =
                ExecutePumped(connection, QStringLiteral("Select * FROM ") + name + QStringLiteral(" WHERE 1=0"),
                              nullptr, ADODB::adOneStatement);
            const auto &fields = empty->Fields();
            for (int i = 0; i < fields.Count(); ++i)
                names += fields[i].Name();
        },
        trouble);
    if (!self)
        return false;
    if (turn != m_turn) // a new connection has been read meanwhile
        return true;
    m_running = false;
    if (!read)
        return false;
    txtCode->SetTextRTF(MaskToCode(cmbMask->currentText(), names));
    return true;
}

void frmScriptMask::Run()
{
    const QPointer<frmScriptMask> self(this);
    if (m_running)
        return;
    SaveSetting(kMaskSetting, cmbMask->currentText());
    QString trouble;
    if (!IsConnected(true) || !self || Generate(&trouble) || !self)
        return;
    MsgBox(QStringLiteral("Error: ") + trouble, mbExclamation, QStringLiteral("Error"), this);
}

void frmScriptMask::Copy()
{
    QGuiApplication::clipboard()->setText(txtCode->Text());
}

// Return runs from everywhere but a button, which it presses; Escape closes.
bool frmScriptMask::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return ChildWindow::eventFilter(watched, event);
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Escape:
        CloseChild();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        (watched == cmdClipBoard ? cmdClipBoard : cmdRun)->click();
        return true;
    default:
        return ChildWindow::eventFilter(watched, event);
    }
}
