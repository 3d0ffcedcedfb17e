#pragma once
// The transfer's window between two databases, each with a place of its own, and what a user does to it.

#include "data/clsConns.h"
#include "movement/frmDTS.h"
#include "tests/movement/windows/Rooms.h"
#include <QAction>

struct Pair
{
    Database from, to;
};
inline std::ostream &operator<<(std::ostream &out, const Pair &pair)
{
    return out << pair.from << " to " << pair.to;
}

struct Transfer : MovementTest, testing::TestWithParam<Pair>
{
    std::unique_ptr<Place> from, to;
    QPointer<frmDTS> window;

    void SetUp() override
    {
        from = std::make_unique<Place>(GetParam().from, QStringLiteral("moved_from"));
        to = std::make_unique<Place>(GetParam().to, QStringLiteral("moved_to"));
        if (!from->Connection || !to->Connection) {
            ASSERT_NE(qEnvironmentVariable("BRINDLEWICK_TEST_SERVERS"), "1") << GetParam();
            GTEST_SKIP() << GetParam();
        }
        from->Run("CREATE TABLE source(id INTEGER, name VARCHAR(40), Price INTEGER)");
        to->Run("CREATE TABLE target(id INTEGER NOT NULL PRIMARY KEY, name VARCHAR(40) NOT NULL, price INTEGER, note "
                "VARCHAR(40))");
    }
    void TearDown() override
    {
        delete window.data();
        gConns().Clear();
    }
    void Open(bool import)
    {
        gConn = (import ? to : from)->Connection;
        m_other = (import ? from : to)->Connection;
        window = new frmDTS;
        window->SetMode(import);
        window->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window));
    }
    ADODB::ConnectionPtr m_other;
    bool HasGone()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window.isNull();
    }
    void Type(int side, const QString &table)
    {
        QLineEdit *box = window->txtTable[size_t(side)];
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, table);
        QTest::keyClick(box, Qt::Key_Tab);
        QCoreApplication::processEvents();
    }
    void FillSource(int rows)
    {
        QString values;
        for (int i = 1; i <= rows; ++i)
            values += QStringLiteral("%1(%2, 'n%2', %3)").arg(i > 1 ? "," : "").arg(i).arg(i * 10);
        if (rows > 0)
            from->Run(QStringLiteral("INSERT INTO source VALUES ") + values);
    }
    void Begin(bool import, const QString &source = QStringLiteral("source"))
    {
        ASSERT_NO_FATAL_FAILURE(Open(import));
        window->UseOther(m_other, QStringLiteral("other"));
        Type(0, source);
        Type(1, QStringLiteral("target"));
    }
    void Go() { ASSERT_NO_FATAL_FAILURE(ClickOn(window->cmdNext)); }
    // The popup of a column, by a right click on it.
    void Popup(int column)
    {
        QTest::mouseClick(window->mfg->viewport(), Qt::RightButton, {}, window->mfg->CellRect(1, column).center());
        ASSERT_TRUE(window->mnuPopup->isVisible());
    }
    void Choose(int column, QAction *entry)
    {
        ASSERT_NO_FATAL_FAILURE(Popup(column));
        if (window->mnuStaticValue->actions().contains(entry)) {
            ASSERT_NO_FATAL_FAILURE(ClickEntry(window->mnuPopup, window->mnuStaticValue->menuAction()));
            ASSERT_TRUE(QTest::qWaitFor([&] { return window->mnuStaticValue->isVisible(); }, 10000));
            ClickEntry(window->mnuStaticValue, entry);
        } else {
            ClickEntry(window->mnuPopup, entry);
        }
    }
};
