// The worked plans of runs, carried out by the window: what was asked for must be what the window did.
#include "AnalyzerFixture.h"
#include "tests/support/Cases.h"
#include <QJsonArray>

TEST_F(Analyzer, RunsGoWhereTheWorkedPlansSay)
{
    const std::vector<cases::Case> plans = cases::Of(QStringLiteral("run_plan"));
    ASSERT_GE(plans.size(), 7U);
    for (const cases::Case &plan : plans) {
        shell.CloseAll();
        window = Make(QString());
        window->SetText(plan.args[QStringLiteral("sql")].toString());
        bar.SetChecked(QStringLiteral("SQLMulti"), plan.args[QStringLiteral("multi")].toBool());
        window->Activated();
        window->mnuSelectAll();
        const bool transaction = plan.args[QStringLiteral("trans")].toBool();
        for (int run = 0; run < 2; ++run) { // the second run tells a reused window from a new one
            if (transaction)
                window->RunSQL_Trans();
            else
                window->RunSQL();
        }
        int made = 0;
        int reused = 0;
        for (const QJsonValue &step : plan.want.toArray()) {
            const QString target = step.toArray()[1].toString();
            made += target == QLatin1String("new") ? 2 : 0;
            reused += target == QLatin1String("reused") ? 1 : 0;
        }
        EXPECT_EQ(Results().size(), made + reused) << "line " << plan.line;
        WaitForResults();
    }
}
