#include "sqltext/clsStringHistory.h"

#include "tests/support/ExpectCases.h"

#include <QJsonArray>

namespace {

QJsonValue Shown(const clsStringHistory::Entry &entry)
{
    if (!entry)
        return QJsonValue::Null;
    return QJsonArray{entry->Key, entry->ColorDef, entry->Code};
}

void Fill(clsStringHistory &history, int count)
{
    for (int i = 1; i <= count; ++i)
        history.AddChange(QStringLiteral("s%1").arg(i), i, 0);
}

} // namespace

TEST(History, Cases)
{
    ExpectCases("history", [](const QJsonObject &args) -> QJsonValue {
        clsStringHistory history;
        QJsonArray seen;
        for (const QJsonValue &value : args[u"steps"].toArray()) {
            const QJsonArray step = value.toArray();
            const QString name = step.at(0).toString();
            if (name == u"AddChange") {
                history.AddChange(step.at(1).toString(), step.at(2).toInt(), step.at(3).toInt());
                seen.append(QJsonValue::Null);
            } else if (name == u"GetUndo") {
                seen.append(Shown(history.GetUndo()));
            } else if (name == u"GetRedo") {
                seen.append(Shown(history.GetRedo()));
            } else if (name == u"CanUndo") {
                seen.append(history.CanUndo());
            } else if (name == u"CanRedo") {
                seen.append(history.CanRedo());
            } else {
                ADD_FAILURE() << "unknown step " << name.toStdString();
            }
        }
        return seen;
    });
}

TEST(History, ElevenAdditionsShareTheNewestEntry)
{
    clsStringHistory history;
    Fill(history, 11);
    for (const char *want : {"s11", "s11", "s9", "s8", "s7", "s6", "s5", "s4", "s3", "s2"})
        EXPECT_EQ(history.GetUndo()->Key.toStdString(), want);
    EXPECT_FALSE(history.CanUndo());
    EXPECT_FALSE(history.GetUndo());
}

TEST(History, NineteenAdditionsLeaveOneEntry)
{
    clsStringHistory history;
    Fill(history, 19);
    const clsStringHistory::Entry newest = history.GetUndo();
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(history.GetUndo(), newest);
    EXPECT_EQ(newest->Key, QStringLiteral("s19"));
}

TEST(History, AnAdditionEndsTheRedoChain)
{
    clsStringHistory history;
    Fill(history, 3);
    history.GetUndo();
    history.GetUndo();
    history.AddChange(QStringLiteral("new"), 0, 0);
    EXPECT_TRUE(history.CanRedo()); // the entry that the stack points to
    EXPECT_EQ(history.GetRedo()->Key, QStringLiteral("new"));
    EXPECT_FALSE(history.CanRedo());
}
