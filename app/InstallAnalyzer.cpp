#include "app/InstallAnalyzer.h"
#include "app/AnalyzerFactory.h"
#include "controls/FlexGrid.h"
#include "views/frmHirarchy.h"

void InstallAnalyzer()
{
    AnalyzerFactory &factory = AnalyzerFactory::Current();
    factory.ResultRows = [](ChildWindow *child) -> qint64 {
        const auto *result = qobject_cast<frmHirarchy *>(child);
        return !result || result->IsRunning() || !result->mfg->DataSource() ? -1 : result->mfg->RecordCount();
    };
}
