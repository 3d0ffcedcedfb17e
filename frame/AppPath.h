#pragma once
// Where the program's own files lie, and the two notations of a path.
//
// The program's notation writes "\" between folders ("\home\me\a.sql"), so that no "/" of a path is taken for a switch
// of the command line. The file layer takes either notation: everything that opens a file passes its name through
// ToNative. Any thread.

#include <QString>

// The folder of es.dat and of everything else that the program writes beside itself: the executable's folder when it is
// writable, else the user's data folder, which is made when it is missing. Without a separator at the end.
QString AppPath();
// Tests (and nobody else) put the folder somewhere else; "" goes back to the rule.
void SetAppPath(const QString &folder);

// The full native path of a file of the application folder.
QString AppFile(const QString &name);

// The full native path of a shipped file (Tokens.col, pictures): beside the program, in the user's data folder or in
// the installed data folder, whichever has it first; beside the program when none has it.
QString DataFile(const QString &name);

QString ToNative(const QString &path);      // "\home\me" to "/home/me"; a path that exists as it stands is left alone
QString ToProgramPath(const QString &path); // the absolute path with "\" between folders
