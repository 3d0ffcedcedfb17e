#include "app/frmHelp.h"
#include "controls/Skin.h"
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFragment>
#include <QUrl>
#include <QVBoxLayout>

static const char s_root[] = ":/manual/";

frmHelp::frmHelp(QWidget *parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(QStringLiteral("Help"));
    resize(720, 560);
    txtPage = new QTextBrowser(this);
    txtPage->setObjectName(QStringLiteral("txtPage"));
    txtPage->setAccessibleName(QStringLiteral("User's manual"));
    txtPage->setOpenLinks(false);
    txtPage->document()->setDocumentMargin(14);
    connect(txtPage, &QTextBrowser::anchorClicked, this, [this](const QUrl &link) {
        if (link.isRelative() && link.path().endsWith(QLatin1String(".md")))
            ShowPage(link.path().chopped(3));
        else if (link.isRelative() && !link.fragment().isEmpty())
            txtPage->scrollToAnchor(link.fragment());
    });
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(txtPage);
    ApplySkin(this);
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

void frmHelp::ShowPage(const QString &page)
{
    QFile file(QString::fromLatin1(s_root) + page + QStringLiteral(".md"));
    if (file.open(QIODevice::ReadOnly))
        txtPage->setMarkdown(QString::fromUtf8(file.readAll()));
    else
        txtPage->setMarkdown(QStringLiteral("There is no page \"%1\".").arg(page));
    ColourLinks();
    if (isMinimized())
        showNormal();
    if (const QWidget *owner = parentWidget(); owner && !isVisible()) {
        const QRect room = owner->window()->geometry();
        move(room.center() - rect().center());
    }
    show();
    raise();
    activateWindow();
    txtPage->setFocus();
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
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}
