#include "app/FileAssociation.h"
#include "app/MainCommands.h"
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
#include <fcntl.h>
#include <sys/stat.h>

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

// A helper of the desktop. "" when it has done its work.
static QString RunHelper(const QString &name, const QStringList &arguments)
{
    if (QStandardPaths::findExecutable(name).isEmpty())
        return name + QStringLiteral(" is not installed");
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(name, arguments);
    const bool ended = process.waitForStarted() && process.waitForFinished(30000);
    if (ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return {};
    const QString said = QString::fromLocal8Bit(process.readAll()).simplified();
    return name + QStringLiteral(": ") +
           (!ended           ? process.errorString()
            : said.isEmpty() ? QStringLiteral("exit status %1").arg(process.exitCode())
                             : said);
}

AssociationReport WriteAssociation(const FileAssociation &record)
{
    AssociationReport report;
    const QString home = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString written = QStringLiteral("%1 files are written below ") + home;
    int files = 0;
    for (const AssociationFile &file : AssociationFiles(record)) {
        if (QString why; !WriteFile(home + QLatin1Char('/') + file.Path, file.Content, why)) {
            if (files > 0)
                report.Done << written.arg(files);
            report.NotDone << why;
            return report;
        }
        ++files;
    }
    report.Done << written.arg(files);
    // Desktops look for new images when the theme's folder is younger than their list of it.
    ::utimensat(AT_FDCWD, QFile::encodeName(home + QStringLiteral("/icons/hicolor")).constData(), nullptr, 0);

    struct Helper
    {
        QString Name;
        QStringList Arguments;
        QString What;
    };
    const QString entry = AssociationEntry(record), type = AssociationType(record);
    const Helper helpers[] = {
        {QStringLiteral("update-mime-database"),
         {home + QStringLiteral("/mime")},
         QStringLiteral("The desktop's list of file types is brought up to date")},
        {QStringLiteral("update-desktop-database"),
         {home + QStringLiteral("/applications")},
         QStringLiteral("The desktop's list of programs is brought up to date")},
        {QStringLiteral("xdg-mime"),
         {QStringLiteral("default"), entry, type},
         QStringLiteral("%1 is the program that opens %2 files").arg(record.Description, type)},
    };
    for (const Helper &helper : helpers)
        if (const QString why = RunHelper(helper.Name, helper.Arguments); why.isEmpty())
            report.Done << helper.What;
        else
            report.NotDone << helper.What + QStringLiteral(" (") + why + QLatin1Char(')');
    return report;
}

QString ReportText(const AssociationReport &report)
{
    const QString line = QStringLiteral("\r\n");
    if (report.NotDone.isEmpty())
        return {};
    if (report.Done.isEmpty())
        return report.NotDone.join(line);
    return QStringLiteral("Done:") + line + report.Done.join(line) + line + line + QStringLiteral("Not done:") + line +
           report.NotDone.join(line);
}

void AssociateFiles(mdiMother &window)
{
    Attempt([&] {
        const QString title = QStringLiteral("File Association");
        if (MsgBox(QStringLiteral("Are you sure you want all *.sql files to be associated with Brindlewick?"),
                   mbYesNo | mbExclamation, title, &window) != mbYes)
            return;
        QString text;
        {
            const WaitCursor wait;
            text = ReportText(WriteAssociation(
                BrindlewickAssociation(QCoreApplication::applicationDirPath() + QStringLiteral("/Brindlewick"))));
        }
        if (!text.isEmpty())
            MsgBox(text, mbExclamation, title, &window);
    });
}
