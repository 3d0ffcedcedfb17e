#include "controls/WholeFile.h"
#include <QSaveFile>

bool WriteWholeFile(const QString &path, const QByteArray &bytes, QString &why)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        why = file.errorString();
        return false;
    }
    if (file.write(bytes) != bytes.size() || !file.flush()) {
        why = WriteFailure(file);
        return false;
    }
    if (file.commit())
        return true;
    why = file.errorString();
    return false;
}

QString WriteFailure(QSaveFile &file)
{
    if (file.flush()) // nothing was left over: the bytes that did not fit were never taken
        file.write("\n");
    file.flush();
    return file.errorString();
}
