#include "app/FileAssociation.h"

static QByteArray XmlText(const QString &text)
{
    return text.toHtmlEscaped().toUtf8();
}

// A value of a desktop entry: a backslash and a line break would be read as the start of something else.
static QString EntryValue(QString text)
{
    return text.replace(QLatin1String("\\"), QLatin1String("\\\\"))
        .replace(QLatin1String("\n"), QLatin1String("\\n"))
        .replace(QLatin1String("\r"), QLatin1String("\\r"));
}

QString ExecArgument(const QString &text)
{
    QString quoted(QLatin1Char('"'));
    for (const QChar c : text) {
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') || c == QLatin1Char('\\'))
            quoted += QLatin1Char('\\');
        quoted += c;
        if (c == QLatin1Char('%'))
            quoted += c;
    }
    return quoted + QLatin1Char('"');
}

static QString Exec(const AssociationCommand &command)
{
    const QString switches = command.Switches.isEmpty() ? QString() : QLatin1Char(' ') + command.Switches;
    return QStringLiteral("Exec=") + EntryValue(ExecArgument(command.Program)) + QStringLiteral(" %f") + switches +
           QLatin1Char('\n');
}

static QString Point(const QString &extension)
{
    return extension.startsWith(QLatin1Char('.')) ? extension : QLatin1Char('.') + extension;
}

QString AssociationType(const FileAssociation &record)
{
    return record.ContentType.isEmpty() ? QStringLiteral("application/x-") + record.ClassName.toLower()
                                        : record.ContentType;
}

QString AssociationEntry(const FileAssociation &record)
{
    return record.ProductKey.toLower() + QStringLiteral(".desktop");
}

static AssociationFile MimeFile(const FileAssociation &record, bool icon)
{
    return {QStringLiteral("mime/packages/%1.xml").arg(record.ProductKey.toLower()),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n"
            "  <mime-type type=\"" +
                XmlText(AssociationType(record)) +
                "\">\n"
                "    <comment>SQL query</comment>\n"
                "    <sub-class-of type=\"text/plain\"/>\n" +
                (icon ? "    <icon name=\"" + XmlText(record.Icon) + "\"/>\n" : QByteArray()) +
                "    <glob pattern=\"*" + XmlText(Point(record.Extension)) +
                "\"/>\n"
                "  </mime-type>\n"
                "</mime-info>\n"};
}

static AssociationFile EntryFile(const FileAssociation &record, bool icon)
{
    QString text = QStringLiteral("[Desktop Entry]\nType=Application\nName=") + EntryValue(record.Description) +
                   QStringLiteral("\nGenericName=Database Client\n");
    if (!record.Commands.isEmpty())
        text += Exec(record.Commands.front());
    if (icon)
        text += QStringLiteral("Icon=") + EntryValue(record.Icon) + QLatin1Char('\n');
    text += QStringLiteral("Terminal=false\nCategories=Development;Database;\nMimeType=%1;\nStartupWMClass=%2\n")
                .arg(AssociationType(record), EntryValue(record.ProductKey));
    QString names, actions;
    for (const AssociationCommand &command : record.Commands) {
        names += command.Name + QLatin1Char(';');
        actions += QStringLiteral("\n[Desktop Action %1]\nName=%1\n").arg(command.Name) + Exec(command);
    }
    if (!names.isEmpty())
        text += QStringLiteral("Actions=") + names + QLatin1Char('\n') + actions;
    return {QStringLiteral("applications/") + AssociationEntry(record), text.toUtf8()};
}

QList<AssociationFile> AssociationFiles(const FileAssociation &record)
{
    const bool icon = record.Icon != QLatin1String(",0");
    QList<AssociationFile> files{MimeFile(record, icon), EntryFile(record, icon)};
    // Twice: for the program, and under the name that desktops derive from the type, for the files themselves.
    const QString ofFiles = AssociationType(record).replace(QLatin1Char('/'), QLatin1Char('-'));
    if (icon)
        for (const AssociationIcon &image : record.Images)
            for (const QString &name : {QStringLiteral("apps/") + record.Icon, QStringLiteral("mimetypes/") + ofFiles})
                files << AssociationFile{image.Size
                                             ? QStringLiteral("icons/hicolor/%1x%1/%2.png").arg(image.Size).arg(name)
                                             : QStringLiteral("icons/hicolor/scalable/%1.svg").arg(name),
                                         image.Content};
    return files;
}
