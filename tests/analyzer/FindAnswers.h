#pragma once
// Answers each showing of the search dialog in turn while it lives, and notes what it was shown with; a showing that is
// not foreseen is cancelled.

#include "data/frmFind.h"
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

class FindAnswers : public QObject
{
public:
    using Answer = std::function<void(frmFind &)>;
    explicit FindAnswers(QList<Answer> answers) : m_answers(std::move(answers))
    {
        connect(&m_timer, &QTimer::timeout, this, [this] {
            auto *find = qobject_cast<frmFind *>(QApplication::activeModalWidget());
            if (!find || !find->isVisible())
                return;
            ++shown;
            criteria += find->cmbCri->currentText();
            replacing += find->cmdReplace->isEnabled();
            if (m_answers.isEmpty())
                QTest::mouseClick(find->cmdCancel, Qt::LeftButton);
            else
                m_answers.takeFirst()(*find);
        });
        m_timer.start(5);
    }
    int shown = 0;
    QStringList criteria;
    QList<bool> replacing;

private:
    QList<Answer> m_answers;
    QTimer m_timer;
};

inline void FindNext(frmFind &find)
{
    QTest::mouseClick(find.cmdFind, Qt::LeftButton);
}

inline FindAnswers::Answer Find(const QString &what)
{
    return [what](frmFind &find) {
        find.cmbCri->lineEdit()->selectAll();
        QTest::keyClicks(find.cmbCri->lineEdit(), what);
        FindNext(find);
    };
}

inline FindAnswers::Answer Replace(const QString &what, const QString &with, bool all)
{
    return [what, with, all](frmFind &find) {
        find.cmbCri->setEditText(what);
        find.cmbReplace->lineEdit()->selectAll();
        QTest::keyClicks(find.cmbReplace->lineEdit(), with);
        QTest::mouseClick(all ? find.cmdReplaceAll : find.cmdReplace, Qt::LeftButton);
    };
}
