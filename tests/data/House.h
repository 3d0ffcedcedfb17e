#pragma once
// What every test of this room starts with: a folder of its own for files and settings, a main window that notes what
// it is told, dialogs that give prepared answers, no connection.

#include "controls/Skin.h"
#include "data/clsConns.h"
#include "data/modMain.h"
#include "frame/AppPath.h"
#include "frame/Settings.h"
#include "sqltext/Keywords.h"
#include "tests/support/DialogDouble.h"
#include "tests/support/ShellDouble.h"
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

inline std::ostream &operator<<(std::ostream &out, const QString &text)
{
    return out << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << text;
}
inline void PrintTo(const QStringList &list, std::ostream *out)
{
    *out << list.join(QStringLiteral(" | "));
}

class DataTest : public testing::Test
{
protected:
    DataTest()
    {
        SetAppPath(m_folder.path());
        SetSettingsFile(m_folder.filePath(QStringLiteral("settings.ini")));
        gConn.reset();
        gKeywordSet = KeywordSet();
        gConns().Clear();
        InitColours();
    }
    ~DataTest() override
    {
        m_shell.CloseAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        gConn.reset();
        gKeywordSet = KeywordSet();
        gConns().Clear();
        SetSettingsFile({});
        SetAppPath({});
    }

    QString Path(const QString &name) const { return m_folder.filePath(name); }
    static QByteArray Read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
    }
    static void Write(const QString &path, const QByteArray &data)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(data);
    }
    // A fresh database of the built-in driver, open as the program's connection.
    void OpenSample(const QStringList &statements, const QString &name = QStringLiteral("sample.db"))
    {
        ASSERT_TRUE(OpenConnection(QStringLiteral("Driver=SQLite;Create=Yes;Database=") + Path(name)))
            << LastOpenError().toStdString();
        for (const QString &sql : statements)
            ASSERT_NO_THROW(gConn->Execute(sql)) << sql.toStdString();
        m_shell.Statuses.clear();
    }
    // Does something with the next modal dialog once it is up; a dialog that is still there afterwards is closed, so
    // that no test hangs.
    template <class Act> void WithDialog(Act act)
    {
        auto *timer = new QTimer(&m_context);
        QObject::connect(timer, &QTimer::timeout, &m_context, [this, timer, act] {
            QWidget *dialog = QApplication::activeModalWidget();
            if (!dialog || !dialog->isVisible())
                return;
            timer->stop();
            timer->deleteLater();
            ++m_dialogs;
            QPointer<QWidget> watched(dialog);
            act(dialog);
            if (watched && watched->isVisible())
                QTimer::singleShot(3000, watched, [watched] {
                    ADD_FAILURE() << "a dialog was left open: " << watched->windowTitle().toStdString();
                    watched->close();
                });
        });
        timer->start(5);
    }
    template <class Condition> static bool Until(Condition condition, int ms = 5000)
    {
        QElapsedTimer since;
        since.start();
        while (!condition() && since.elapsed() < ms)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return condition();
    }
    static void Click(QWidget *dialog, const char *name)
    {
        auto *button = dialog->findChild<QPushButton *>(QLatin1String(name));
        ASSERT_NE(button, nullptr) << name;
        QTest::mouseClick(button, Qt::LeftButton);
    }

    QTemporaryDir m_folder;
    ShellDouble m_shell;
    DialogDouble m_boxes;
    int m_dialogs = 0; // met by WithDialog
    QObject m_context; // what waits for a dialog ends with the test
};
