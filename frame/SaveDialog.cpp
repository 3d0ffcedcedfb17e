#include "frame/SaveDialog.h"
#include "controls/WholeFile.h"
#include "frame/AppPath.h"
#include "session/Pump.h"
#include <QFileInfo>
#include <QPointer>
#include <QSaveFile>
#include <QWidget>

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
    const QPointer<QWidget> owner(parent); // events run meanwhile
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Refused(owner, file.errorString());
    {
        Breather breather(QStringLiteral("Saving ... (Esc stops)"));
        for (qint64 i = 0; i < lines; ++i) {
            const QByteArray bytes = line(i).toUtf8() + "\r\n";
            if (file.write(bytes) != bytes.size())
                return Refused(owner, WriteFailure(file));
            if (!breather.Breathe())
                return false; // given up: the former file stands
        }
    }
    if (!file.flush())
        return Refused(owner, WriteFailure(file));
    return file.commit() || Refused(owner, file.errorString());
}

bool WriteTextFile(QWidget *parent, const QString &path, const QString &text)
{
    QString why;
    return WriteWholeFile(path, text.toUtf8(), why) || Refused(parent, why);
}
