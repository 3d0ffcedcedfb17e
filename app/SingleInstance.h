#pragma once
// One running program for each user: a lock file in the user's configuration folder. The lock of a dead process does
// not block, and neither does one that was left hollow by a crash. Unit tests simply make none.

#include <QLockFile>
#include <QString>

class SingleInstance
{
public:
    explicit SingleInstance(const QString &folder); // made when it is missing
    // True when no other instance runs, or when no lock can be written at all: better two windows than none.
    bool Take();
    void Release(); // for an end that runs no destructors

private:
    QString m_file;
    QLockFile m_lock;
};
