#include "app/InstallAnalyzer.h"
#include "analyzer/frmSQL.h"
#include "app/AnalyzerFactory.h"
#include "controls/FlexGrid.h"
#include "frame/Shell.h"
#include "views/frmHirarchy.h"

void InstallAnalyzer()
{
    AnalyzerFactory &factory = AnalyzerFactory::Current();
    factory.Create = [](const QString &connectionName) -> ChildWindow * {
        auto *analyzer = new frmSQL;
        Shell::Current().AddChild(analyzer);
        analyzer->SetConnName(connectionName); // before Load, which reads the stored text by it
        analyzer->Load();
        return analyzer;
    };
    factory.Text = [](ChildWindow *child) {
        const auto *analyzer = qobject_cast<frmSQL *>(child);
        return analyzer ? analyzer->Text() : QString();
    };
    factory.SetText = [](ChildWindow *child, const QString &text) {
        if (auto *analyzer = qobject_cast<frmSQL *>(child))
            analyzer->SetText(text);
    };
    factory.SetFileFilter = [](ChildWindow *child, const QString &filter) {
        if (auto *analyzer = qobject_cast<frmSQL *>(child))
            analyzer->FileFilter = filter;
    };
    factory.ResultRows = [](ChildWindow *child) -> qint64 {
        const auto *result = qobject_cast<frmHirarchy *>(child);
        return !result || result->IsRunning() || !result->mfg->DataSource() ? -1 : result->mfg->RecordCount();
    };
}
