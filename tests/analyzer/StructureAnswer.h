#pragma once
// Answers the dialog of statement types while it lives: `use` does what a user would, else Return takes it as it is.

#include "analyzer/frmGetSQLStructure.h"
#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>

class StructureAnswer : public QObject
{
public:
    explicit StructureAnswer(std::function<void(frmGetSQLStructure &)> use = {}) : m_use(std::move(use))
    {
        connect(&m_timer, &QTimer::timeout, this, [this] {
            auto *ask = qobject_cast<frmGetSQLStructure *>(QApplication::activeModalWidget());
            if (!ask || !ask->isVisible())
                return;
            ++shown;
            m_timer.stop(); // what a user does may take its time
            if (m_use)
                m_use(*ask);
            else
                QTest::keyClick(ask, Qt::Key_Return);
            m_timer.start();
        });
        m_timer.setInterval(5);
        m_timer.start();
    }
    int shown = 0;

private:
    std::function<void(frmGetSQLStructure &)> m_use;
    QTimer m_timer;
};
