#pragma once
// The association of *.sql files with the program: what the desktop is told, and how it gets there.
//
// AssociationFiles turns the record into the desktop's own files and touches nothing; any thread. WriteAssociation
// writes them and tells the desktop; interface thread, nothing is raised. All files lie below the user's data folder
// (XDG_DATA_HOME); the choice of the default program is the desktop's own file and is left to xdg-mime.

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

struct AssociationCommand
{
    QString Name;     // as the desktop's menu shows it
    QString Program;  // full path of the executable
    QString Switches; // behind the file's name, or ""
};

struct AssociationIcon
{
    int Size = 0; // pixels; 0 for the scalable one
    QByteArray Content;
};

struct FileAssociation
{
    QString ProductKey;                 // name of the files that are written, in lower case
    QString Description;                // name of the program in the desktop's menus
    QString ClassName;                  // makes the MIME type where no content type is given
    QString Extension;                  // with or without its point
    QString ContentType;                // the desktop's MIME type, or ""
    QList<AssociationCommand> Commands; // the first is the default
    QString Icon;                       // its name in the icon theme; ",0" for none
    QList<AssociationIcon> Images;
};

struct AssociationFile
{
    QString Path; // below the data folder
    QByteArray Content;
};

// The MIME description, the desktop entry with one action a command, and the images of the icon, for the program and
// for the files of the type.
QList<AssociationFile> AssociationFiles(const FileAssociation &record);
QString AssociationType(const FileAssociation &record);  // "application/sql"
QString AssociationEntry(const FileAssociation &record); // "brindlewick.desktop"

// One argument of a desktop entry's Exec line: in double quotes, with what the desktop would take for its own escaped.
QString ExecArgument(const QString &text);

// The program's own record, with its icon in the usual sizes and scalable.
FileAssociation BrindlewickAssociation(const QString &program);

// What has come of it, a line each, for the user.
struct AssociationReport
{
    QStringList Done;
    QStringList NotDone; // with the reason: the system's words, a helper's words, or that the helper is not installed
};
QString ReportText(const AssociationReport &report); // "" when all was done

// Writes the files, has the desktop's helpers take notice of them, and makes the entry the default program of its type.
// Where a file cannot be written nothing else is tried; what had been written before stays. A helper that is missing or
// fails does not stop the others.
AssociationReport WriteAssociation(const FileAssociation &record);
