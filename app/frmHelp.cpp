#include "app/frmHelp.h"
#include "controls/Skin.h"
#include <QDir>
#include <QFile>
#include <QKeyEvent>
#include <QTextBrowser>
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
    if (isMinimized())
        showNormal();
    show();
    raise();
    activateWindow();
    txtPage->setFocus();
}

void frmHelp::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}
