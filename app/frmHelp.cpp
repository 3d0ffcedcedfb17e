#include "app/frmHelp.h"
#include "app/WindowTable.h"
#include "controls/ListView.h"
#include "controls/Skin.h"
#include "frame/RememberedSize.h"
#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QHash>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QShortcut>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <QUrl>
#include <QVBoxLayout>

static const char s_root[] = ":/manual/";
static const int s_listWidth = 190; // pixels

static QString Markdown(const QString &page)
{
    QFile file(QString::fromLatin1(s_root) + page + QStringLiteral(".md"));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

// What a reader sees of a page. The manual does not change while the program runs, and the search reads all of it at
// every letter.
static QString PlainText(const QString &page)
{
    static QHash<QString, QString> known;
    const auto there = known.constFind(page);
    if (there != known.cend())
        return *there;
    QTextDocument document;
    document.setMarkdown(Markdown(page));
    return *known.insert(page, document.toPlainText());
}

static QList<int> PlacesIn(const QString &text, const QString &what)
{
    QList<int> places;
    if (what.isEmpty())
        return places;
    for (qsizetype at = text.indexOf(what, 0, Qt::CaseInsensitive); at >= 0;
         at = text.indexOf(what, at + what.size(), Qt::CaseInsensitive))
        places << int(at);
    return places;
}

frmHelp::frmHelp(QWidget *parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("Help"));
    resize(860, 580);
    txtSearch = new QLineEdit(this);
    txtSearch->setObjectName(QStringLiteral("txtSearch"));
    txtSearch->setAccessibleName(QStringLiteral("Search the manual"));
    txtSearch->setPlaceholderText(QStringLiteral("Search the manual"));
    txtSearch->setClearButtonEnabled(true);
    lvPages = new ListView(this);
    lvPages->setObjectName(QStringLiteral("lvPages"));
    lvPages->setAccessibleName(QStringLiteral("Pages of the manual"));
    lvPages->setHeaderHidden(true);
    lvPages->AddColumn(QStringLiteral("Page"));
    lvPages->header()->setStretchLastSection(true);
    txtPage = new QTextBrowser(this);
    txtPage->setObjectName(QStringLiteral("txtPage"));
    txtPage->setAccessibleName(QStringLiteral("User's manual"));
    txtPage->setOpenLinks(false);
    txtPage->document()->setDocumentMargin(14);
    txtSearch->setFixedWidth(s_listWidth);
    lvPages->setFixedWidth(s_listWidth);

    auto *left = new QVBoxLayout;
    left->setContentsMargins(8, 8, 8, 8);
    left->addWidget(txtSearch);
    left->addWidget(lvPages, 1);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    row->addLayout(left);
    row->addWidget(txtPage, 1);
    RememberSize(this);
    ApplySkin(this);
    ListPages();

    connect(txtPage, &QTextBrowser::anchorClicked, this, [this](const QUrl &link) {
        if (link.isRelative() && link.path().endsWith(QLatin1String(".md")))
            ShowPage(link.path().chopped(3));
        else if (link.isRelative() && !link.fragment().isEmpty())
            txtPage->scrollToAnchor(link.fragment());
    });
    connect(txtSearch, &QLineEdit::textChanged, this, &frmHelp::Search);
    connect(txtSearch, &QLineEdit::returnPressed, this, [this] { Step(1); });
    connect(lvPages, &ListView::SelectionChange, this, [this] {
        const qint64 chosen = lvPages->SelectedRow();
        if (m_listing || chosen < 0 || lvPages->Tag(chosen) == m_page)
            return;
        Load(lvPages->Tag(chosen));
        Mark();
    });
    const auto shortcut = [this](const QKeySequence &keys, auto act) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, act);
    };
    shortcut(QKeySequence(Qt::Key_F3), [this] { Step(1); });
    shortcut(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { Step(-1); });
    shortcut(QKeySequence::Find, [this] {
        txtSearch->setFocus();
        txtSearch->selectAll();
    });
}

QStringList frmHelp::Pages()
{
    QStringList pages;
    for (const QString &file :
         QDir(QString::fromLatin1(s_root)).entryList({QStringLiteral("*.md")}, QDir::Files, QDir::Name))
        pages << file.chopped(3);
    if (pages.removeOne(QStringLiteral("index")))
        pages.prepend(QStringLiteral("index"));
    return pages;
}

QString frmHelp::Title(const QString &page)
{
    const QString first = Markdown(page).section(QLatin1Char('\n'), 0, 0).trimmed();
    return first.startsWith(QLatin1String("# ")) ? first.mid(2) : page;
}

QString frmHelp::PageOf(const QString &formName)
{
    if (const WindowRow *row = FindWindow(formName))
        return QString::fromLatin1(row->Page);
    return QStringLiteral("index");
}

void frmHelp::Load(const QString &page)
{
    m_page = page;
    m_hit = -1;
    const QString text = Markdown(page);
    txtPage->setMarkdown(text.isEmpty() ? QStringLiteral("There is no page \"%1\".").arg(page) : text);
    ColourLinks();
}

void frmHelp::ShowPage(const QString &page)
{
    Load(page);
    txtSearch->clear();
    ListPages();
    Mark();
    if (isMinimized())
        showNormal();
    const QWidget *const owner = isVisible() ? nullptr : parentWidget();
    if (owner)
        PlaceWhole(this, owner->window());
    show();
    if (owner) // showing gave it its remembered size, which may be all of the screen
        PlaceWhole(this, owner->window());
    raise();
    activateWindow();
    txtPage->setFocus();
}

QList<int> frmHelp::Hits(const QString &text) const
{
    return PlacesIn(txtPage->toPlainText(), text);
}

void frmHelp::ListPages()
{
    m_listing = true;
    lvPages->Clear();
    const QString what = txtSearch->text();
    for (const QString &page : Pages()) {
        const qsizetype hits = what.isEmpty() ? 0 : PlacesIn(PlainText(page), what).size();
        if (!what.isEmpty() && hits == 0)
            continue;
        const QString count = what.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(hits);
        const qint64 row = lvPages->AddItem(Title(page) + count, page);
        if (page == m_page)
            lvPages->SelectRow(row);
    }
    m_listing = false;
}

// What is typed: the page that is shown stays when it has a hit, else the first one that has takes its place.
void frmHelp::Search()
{
    m_hit = -1;
    ListPages();
    if (!txtSearch->text().isEmpty() && lvPages->Count() > 0) {
        if (lvPages->SelectedRow() < 0)
            lvPages->SelectRow(0);
        m_hit = 0;
    }
    Mark();
}

void frmHelp::Step(int by)
{
    if (txtSearch->text().isEmpty() || lvPages->Count() == 0)
        return;
    const qsizetype hits = Hits(txtSearch->text()).size();
    int next = m_hit + by;
    if (next < 0 || next >= hits) { // on to the next page, round at the end
        const qint64 pages = lvPages->Count();
        lvPages->SelectRow((qMax<qint64>(0, lvPages->SelectedRow()) + by + pages) % pages);
        next = by > 0 ? 0 : int(Hits(txtSearch->text()).size()) - 1;
    }
    m_hit = next;
    Mark();
}

// All hits of the page, and the one that is shown.
void frmHelp::Mark()
{
    const int length = int(txtSearch->text().size());
    const QList<int> places = Hits(txtSearch->text());
    QList<QTextEdit::ExtraSelection> marks;
    for (qsizetype i = 0; i < places.size(); ++i) {
        QTextEdit::ExtraSelection mark;
        mark.cursor = QTextCursor(txtPage->document());
        mark.cursor.setPosition(places[i]);
        mark.cursor.setPosition(places[i] + length, QTextCursor::KeepAnchor);
        mark.format.setBackground(SkinColour(i == m_hit ? SkinRole::Focus : SkinRole::Selection));
        mark.format.setForeground(SkinColour(i == m_hit ? SkinRole::Editor : SkinRole::SelectionText));
        marks << mark;
        if (i == m_hit) {
            QTextCursor at(txtPage->document());
            at.setPosition(places[i]);
            txtPage->setTextCursor(at);
        }
    }
    txtPage->setExtraSelections(marks);
    if (m_hit >= 0)
        txtPage->ensureCursorVisible();
}

// The toolkit gives links the colour of the desktop's palette, which nobody can read on our ground.
void frmHelp::ColourLinks()
{
    QTextCharFormat look;
    look.setForeground(SkinColour(SkinRole::Focus));
    for (QTextBlock block = txtPage->document()->begin(); block.isValid(); block = block.next())
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextFragment fragment = part.fragment();
            if (!fragment.charFormat().isAnchor())
                continue;
            QTextCursor cursor(txtPage->document());
            cursor.setPosition(fragment.position());
            cursor.setPosition(fragment.position() + fragment.length(), QTextCursor::KeepAnchor);
            cursor.mergeCharFormat(look);
        }
}

void frmHelp::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape)
        QWidget::keyPressEvent(event);
    else if (!txtSearch->text().isEmpty())
        txtSearch->clear();
    else
        close();
}
