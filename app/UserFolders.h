#pragma once
// Where this user's things lie. BRINDLEWICK_HOME puts all of them into one folder: settings, es.dat and the lock of the
// one instance. It serves trials and tests, and lets two people's sessions stand side by side.

#include <QString>

void UseHomeFromEnvironment(); // before the first setting is read
QString InstanceFolder();      // of the lock of the one instance
