#pragma once
// Files that are replaced as a whole: the former one stands until the new one is safely there, whatever fails.
// Any thread; nothing raises.

#include <QByteArray>
#include <QString>

class QSaveFile;

// False with the system's words in `why`.
bool WriteWholeFile(const QString &path, const QByteArray &bytes, QString &why);

// Why a write into the file, or its flush, has failed. A disk that fills up takes a part of the bytes first and has no
// reason to give for that; so the rest is tried once more.
QString WriteFailure(QSaveFile &file);
