#include "analyzer/frmCode.h"

#include "controls/RichTextBox.h"
#include "controls/Skin.h"
#include "frame/RememberedSize.h"
#include "frame/Settings.h"
#include "frame/Shell.h"
#include "sqltext/TextToCode.h"
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

struct ChoiceRow
{
    QComboBox *frmCode::*list;
    const char *name;
    const char *setting;
    const char *caption;
    const QString &otherwise;
    const char *choices[2];
};
const ChoiceRow kChoices[] = {
    {&frmCode::cmbQuote, "cmbQuote", "Quote", "&Quote", CodeQuote, {"\"", "'"}},
    {&frmCode::cmbPrefix, "cmbPrefix", "Prefix", "P&refix", CodePrefix, {"&", "+"}},
    {&frmCode::cmbPostfix, "cmbPostfix", "Postfix", "P&ostfix", CodePostfix, {" _", " "}},
};

QString Stored(const char *setting, const QString &otherwise)
{
    return GetSetting(QString::fromLatin1(setting), otherwise);
}

// The stored choice may be one that the list does not offer; it is shown then all the same.
void Choose(QComboBox *list, const QString &text)
{
    int index = list->findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    if (index < 0) {
        list->insertItem(0, text);
        index = 0;
    }
    list->setCurrentIndex(index);
}

} // namespace

QString PlainCodeAsStored(const QString &text)
{
    return TextToPlainCode(text, Stored("Quote", CodeQuote), Stored("Prefix", CodePrefix),
                           Stored("Postfix", CodePostfix));
}

frmCode::frmCode(QWidget *parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Text to Code"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setAttribute(Qt::WA_DeleteOnClose);
    auto *column = new QVBoxLayout(this);
    auto *lists = new QHBoxLayout;
    for (const ChoiceRow &row : kChoices) {
        auto *list = new QComboBox(this);
        list->setObjectName(QString::fromLatin1(row.name));
        list->setAccessibleName(QString::fromLatin1(row.setting));
        for (const char *choice : row.choices)
            list->addItem(QString::fromLatin1(choice));
        Choose(list, Stored(row.setting, row.otherwise));
        this->*row.list = list;
        auto *label = new QLabel(QString::fromLatin1(row.caption), this);
        label->setBuddy(list);
        lists->addWidget(label);
        lists->addWidget(list);
    }
    const int blank = cmbPostfix->findText(QStringLiteral(" "));
    cmbPostfix->setItemData(blank, QStringLiteral("blank"), Qt::AccessibleTextRole);
    cmbPostfix->setItemData(blank, QStringLiteral("A blank"), Qt::ToolTipRole);
    lists->addStretch(1);
    column->addLayout(lists);

    txtCode = new RichTextBox(this);
    txtCode->setObjectName(QStringLiteral("txtCode"));
    txtCode->setAccessibleName(QStringLiteral("Code"));
    txtCode->setReadOnly(true);
    txtCode->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    txtCode->setTabChangesFocus(true);
    column->addWidget(txtCode, 1);

    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    const auto add = [&](QPushButton *&button, const char *name, const QString &caption) {
        button = new QPushButton(caption, this);
        button->setObjectName(QString::fromLatin1(name));
        button->setAutoDefault(false);
        buttons->addWidget(button);
    };
    add(cmdRun, "cmdRun", QStringLiteral("R&un"));
    add(cmdClipBoard, "cmdClipBoard", QStringLiteral("Cli&pboard"));
    add(cmdClose, "cmdClose", QStringLiteral("&Close"));
    cmdRun->setDefault(true);
    column->addLayout(buttons);
    resize(560, 360);

    for (const ChoiceRow &row : kChoices)
        connect(this->*row.list, &QComboBox::currentIndexChanged, this, &frmCode::StoreChoices);
    connect(cmdRun, &QPushButton::clicked, this, &frmCode::ShowAgain);
    connect(cmdClipBoard, &QPushButton::clicked, this, &frmCode::Copy);
    connect(cmdClose, &QPushButton::clicked, this, &QDialog::reject);
    RememberSize(this);
    ApplySkin(this);
}

frmCode *frmCode::ShowCode(const QString &text)
{
    static QPointer<frmCode> s_window;
    if (!s_window)
        s_window = new frmCode(Shell::Current().MainWindow());
    s_window->MakeVBString(text);
    s_window->show();
    s_window->raise();
    s_window->activateWindow();
    return s_window;
}

void frmCode::MakeVBString(const QString &text)
{
    m_text = text;
    ShowAgain();
}

void frmCode::StoreChoices()
{
    for (const ChoiceRow &row : kChoices)
        SaveSetting(QString::fromLatin1(row.setting), (this->*row.list)->currentText());
    ShowAgain();
}

void frmCode::ShowAgain()
{
    txtCode->SetTextRTF(
        TextToCode(m_text, cmbQuote->currentText(), cmbPrefix->currentText(), cmbPostfix->currentText()));
}

void frmCode::Copy()
{
    QGuiApplication::clipboard()->setText(PlainCodeAsStored(m_text));
}
