#include "data/frmFind.h"
#include "controls/Twips.h"
#include "frame/Settings.h"
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace {

constexpr double kFarthest = 1e6; // twips; no screen is as wide

const auto kFindList = QStringLiteral("FindList");
const auto kReplaceList = QStringLiteral("ReplaceList");

QComboBox *MakeCombo(frmFind *form, const char *name, const QString &caption)
{
    auto *combo = new QComboBox(form);
    combo->setObjectName(QLatin1String(name));
    combo->setAccessibleName(caption);
    combo->setEditable(true);
    combo->setInsertPolicy(QComboBox::NoInsert);
    combo->setCompleter(nullptr); // what is typed is searched, letter by letter as it stands
    combo->setMinimumContentsLength(28);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return combo;
}

QStringList Entries(const QComboBox *combo)
{
    QStringList entries;
    for (int i = 0; i < combo->count(); ++i)
        entries << combo->itemText(i);
    return entries;
}

void PushInto(QComboBox *combo)
{
    const QString text = combo->currentText();
    const QStringList entries = PushEntry(Entries(combo), text);
    combo->clear();
    combo->addItems(entries);
    combo->setCurrentIndex(0);
}

} // namespace

frmFind::frmFind(QWidget *parent) : ModalForm(QStringLiteral("Find"), parent)
{
    auto *grid = new QGridLayout;
    const auto addRow = [&](int row, const QString &caption, QComboBox *&combo, const char *name) {
        combo = MakeCombo(this, name, caption);
        auto *label = new QLabel(caption, this);
        label->setBuddy(combo);
        grid->addWidget(label, row, 0);
        grid->addWidget(combo, row, 1);
    };
    addRow(0, QStringLiteral("Find What:"), cmbCri, "cmbCri");
    addRow(1, QStringLiteral("Replace With:"), cmbReplace, "cmbReplace");
    addRow(2, QStringLiteral("Option"), cmbOpt, "cmbOpt");
    chkCase = new QCheckBox(QStringLiteral("Case Sensitive"), this);
    chkExact = new QCheckBox(QStringLiteral("Exact Match"), this);
    chkCase->setObjectName(QStringLiteral("chkCase"));
    chkExact->setObjectName(QStringLiteral("chkExact"));
    grid->addWidget(chkCase, 3, 1);
    grid->addWidget(chkExact, 4, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(5, 1);

    auto *buttons = new QVBoxLayout;
    const auto addButton = [&](QPushButton *&button, const QString &caption, const char *name) {
        button = new QPushButton(caption, this);
        button->setObjectName(QLatin1String(name));
        button->setAutoDefault(false);
        buttons->addWidget(button);
    };
    addButton(cmdFind, QStringLiteral("Find &Next"), "cmdFind");
    addButton(cmdReplace, QStringLiteral("&Replace"), "cmdReplace");
    addButton(cmdReplaceAll, QStringLiteral("Replace &All"), "cmdReplaceAll");
    addButton(cmdCancel, QStringLiteral("&Cancel"), "cmdCancel");
    buttons->addStretch(1);
    cmdFind->setDefault(true);
    auto *row = new QHBoxLayout(this);
    row->addLayout(grid, 1);
    row->addLayout(buttons);
    resize(480, sizeHint().height());

    // Only the newest entry is read back, although eleven are kept.
    if (const QString entry = GetSetting(QStringLiteral("0FindList")); !entry.isEmpty())
        cmbCri->addItem(entry);
    if (const QString entry = GetSetting(QStringLiteral("0ReplaceList")); !entry.isEmpty())
        cmbReplace->addItem(entry);
    chkExact->setChecked(GetSettingNumber(QStringLiteral("SearchExact"), 0) == 1);
    chkCase->setChecked(GetSettingNumber(QStringLiteral("SearchCase"), 0) == 1);
    EnableReplace(false);
    cmbCri->setCurrentIndex(cmbCri->count() > 0 ? 0 : -1);
    cmbCri->setFocus();

    connect(cmdFind, &QPushButton::clicked, this, [this] { Take(false, false); });
    connect(cmdReplace, &QPushButton::clicked, this, [this] { Take(true, false); });
    connect(cmdReplaceAll, &QPushButton::clicked, this, [this] { Take(false, true); });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmFind::~frmFind() = default;

void frmFind::EnableReplace(bool Enabled)
{
    cmdReplace->setEnabled(Enabled);
    cmdReplaceAll->setEnabled(Enabled);
    cmbReplace->setEnabled(Enabled);
    if (!Enabled)
        cmbReplace->clearEditText();
}

void frmFind::SetCriteria(const QString &text)
{
    cmbCri->setEditText(text);
}

void frmFind::Take(bool replace, bool all)
{
    PushInto(cmbCri);
    if (replace || all)
        PushInto(cmbReplace);
    DoReplace = replace;
    DoReplaceAll = all;
    ReplaceWith = replace || all ? cmbReplace->currentText() : QString();
    ExactMatch = chkExact->isChecked();
    CaseSensitive = chkCase->isChecked();
    Criteria = cmbCri->currentText();
    OptionText = cmbOpt->currentText();
    SaveLists();
    Finish();
}

void frmFind::SaveLists() const
{
    for (const auto &[key, value] : SavedListKeys(Entries(cmbCri), kFindList))
        SaveSetting(key, value);
    for (const auto &[key, value] : SavedListKeys(Entries(cmbReplace), kReplaceList))
        SaveSetting(key, value);
    SaveSetting(QStringLiteral("SearchExact"), chkExact->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
    SaveSetting(QStringLiteral("SearchCase"), chkCase->isChecked() ? QStringLiteral("1") : QStringLiteral("0"));
}

void frmFind::showEvent(QShowEvent *event)
{
    ModalForm::showEvent(event);
    const double left = GetSettingNumber(QStringLiteral("FindLocX"), -1);
    const double top = GetSettingNumber(QStringLiteral("FindLocy"), -1); // the store tells no "y" from "Y"
    if (left >= 1 && top >= 1 && left < kFarthest && top < kFarthest) {
        const QRect place(QPoint(ToPixels(qint64(left)), ToPixels(qint64(top))), size());
        // A place on a screen that has been taken away since would put the dialog out of reach.
        if (QGuiApplication::screenAt(place.center())) {
            setGeometry(place);
            return;
        }
    }
    const QScreen *at = screen() ? screen() : QGuiApplication::primaryScreen();
    if (!at)
        return;
    const QRect area = at->geometry();
    move(area.x() + (area.width() - width()) / 2, area.y() + (area.height() - height()) / 2);
}

void frmFind::done(int result)
{
    if (WasShown()) {
        // Without the desktop's frame, as it is read: the frame is not known before the window has one.
        SaveSettingNumber(QStringLiteral("FindLocX"), ToTwips(geometry().x()));
        SaveSettingNumber(QStringLiteral("FindLocY"), ToTwips(geometry().y()));
    }
    ModalForm::done(result);
}

FindAnswer AskFind(QWidget *parent, bool replacing, const QString &criteria)
{
    frmFind find(parent);
    find.EnableReplace(replacing);
    if (!criteria.isEmpty())
        find.SetCriteria(criteria);
    find.ShowModal();
    FindAnswer answer;
    answer.cancelled = find.Cancelled;
    answer.criteria = find.Criteria;
    answer.exactMatch = find.ExactMatch;
    answer.caseSensitive = find.CaseSensitive;
    answer.replaceWith = find.ReplaceWith;
    answer.doReplace = find.DoReplace;
    answer.doReplaceAll = find.DoReplaceAll;
    return answer;
}
