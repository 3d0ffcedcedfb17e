#include "app/FileAssociation.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "controls/Dialogs.h"
#include "controls/WaitCursor.h"
#include "controls/WholeFile.h"
#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QSvgRenderer>
#include <cerrno>

static QByteArray Png(QSvgRenderer &drawing, int size)
{
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

FileAssociation BrindlewickAssociation(const QString &program)
{
    FileAssociation record;
    record.ProductKey = QStringLiteral("Brindlewick");
    record.Description = QStringLiteral("Brindlewick");
    record.ClassName = QStringLiteral("BrindlewickData");
    record.Extension = QStringLiteral(".sql");
    record.ContentType = QStringLiteral("application/sql");
    record.Commands = {{QStringLiteral("Open"), program, QString()},
                       {QStringLiteral("Run"), program, QStringLiteral("/R")}};
    record.Icon = QStringLiteral("brindlewick");
    if (QFile drawing(QStringLiteral(":/icon/brindlewick.svg")); drawing.open(QIODevice::ReadOnly)) {
        const QByteArray svg = drawing.readAll();
        record.Images << AssociationIcon{0, svg};
        QSvgRenderer renderer(svg);
        for (const int size : {16, 22, 24, 32, 48, 64, 128, 256})
            record.Images << AssociationIcon{size, Png(renderer, size)};
    }
    return record;
}

static bool WriteFile(const QString &path, const QByteArray &content, QString &why)
{
    const QString folder = QFileInfo(path).path();
    errno = 0;
    if (!QDir().mkpath(folder)) {
        why = folder + QStringLiteral("\r\n") + qt_error_string(errno);
        return false;
    }
    QString reason;
    if (WriteWholeFile(path, content, reason))
        return true;
    why = path + QStringLiteral("\r\n") + reason;
    return false;
}

// A helper of the desktop. One that is not there is no failure when it only freshens a cache.
static bool RunHelper(const QString &name, const QStringList &arguments, bool needed, QString &why)
{
    if (!needed && QStandardPaths::findExecutable(name).isEmpty())
        return true;
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(name, arguments);
    const bool ended = process.waitForStarted() && process.waitForFinished(30000);
    if (ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return true;
    const QString said = QString::fromLocal8Bit(process.readAll()).simplified();
    why = name + QStringLiteral("\r\n") + (!ended || said.isEmpty() ? process.errorString() : said);
    if (ended && said.isEmpty())
        why = name + QStringLiteral("\r\nExit status %1").arg(process.exitCode());
    return false;
}

bool WriteAssociation(const FileAssociation &record, QString &why)
{
    const QString home = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    for (const AssociationFile &file : AssociationFiles(record))
        if (!WriteFile(home + QLatin1Char('/') + file.Path, file.Content, why))
            return false;
    return RunHelper(QStringLiteral("update-mime-database"), {home + QStringLiteral("/mime")}, false, why) &&
           RunHelper(QStringLiteral("update-desktop-database"), {home + QStringLiteral("/applications")}, false, why) &&
           RunHelper(QStringLiteral("xdg-mime"),
                     {QStringLiteral("default"), AssociationEntry(record), AssociationType(record)}, true, why);
}

void mdiMother::mnuFileAssociation()
{
    Attempt([&] {
        const QString title = QStringLiteral("File Association");
        if (MsgBox(QStringLiteral("Are you sure you want all *.sql files to be associated with Brindlewick?"),
                   mbYesNo | mbExclamation, title, this) != mbYes)
            return;
        QString why;
        bool written = false;
        {
            const WaitCursor wait;
            written = WriteAssociation(
                BrindlewickAssociation(QCoreApplication::applicationDirPath() + QStringLiteral("/Brindlewick")), why);
        }
        if (!written)
            MsgBox(why, mbExclamation, title, this);
    });
}
