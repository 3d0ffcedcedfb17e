#include "data/SaveDialog.h"
#include "data/AppPath.h"
#include "data/Pump.h"
#include <QFileInfo>
#include <QSaveFile>

namespace {

bool Refused(QWidget *parent, const QString &why)
{
    MsgBox(QStringLiteral("Error: ") + why, mbExclamation, QStringLiteral("Error"), parent);
    return false;
}

} // namespace

QString AskSavePath(QWidget *parent, const QString &title, const QString &filter, const QString &defaultExtension,
                    int icon)
{
    const QString path = ToNative(SaveFileDialog(title, filter, defaultExtension, {}, parent));
    if (path.isEmpty() || !QFileInfo::exists(path))
        return path;
    const int answer =
        MsgBox(QStringLiteral("This file name already exists. Are you sure you want to overwrite this file?"),
               mbYesNo | icon, QStringLiteral("Save"), parent);
    return answer == mbYes ? path : QString();
}

bool WriteTextLines(QWidget *parent, const QString &path, qint64 lines, const std::function<QString(qint64 line)> &line)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Refused(parent, file.errorString());
    {
        Breather breather;
        for (qint64 i = 0; i < lines; ++i) {
            if (file.write(line(i).toUtf8() + "\r\n") < 0)
                return Refused(parent, file.errorString());
            if (!breather.Breathe())
                return false; // given up: the former file stands
        }
    }
    return file.commit() || Refused(parent, file.errorString());
}

bool WriteTextFile(QWidget *parent, const QString &path, const QString &text)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        return Refused(parent, file.errorString());
    return true;
}
