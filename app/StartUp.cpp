#include "app/StartUp.h"
#include "app/CommandLine.h"
#include "app/SideBar.h"
#include "app/Toolbars.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "controls/Skin.h"
#include "controls/Splitter.h"
#include "data/modKeywords.h"
#include "frame/AppPath.h"
#include <QFileInfo>

static constexpr StartStep s_steps[] = {
    {1, "test mode"},  {2, "single instance"}, {3, "colours"},       {4, "schema menus off"}, {5, "settings"},
    {6, "data types"}, {7, "splitter"},        {8, "keywords"},      {9, "side bar"},         {10, "toolbar"},
    {11, "skin"},      {12, "status"},         {13, "command line"},
};

std::span<const StartStep> StartSteps()
{
    return s_steps;
}

StartUp::StartUp(mdiMother &window, QString commandLine, std::function<bool()> oneInstance)
    : m_window(window), m_commandLine(std::move(commandLine)), m_oneInstance(std::move(oneInstance))
{
}

bool StartUp::Run()
{
    for (const StartStep &step : s_steps) {
        if (BeforeStep)
            BeforeStep(step.Number);
        bool goOn = true;
        Attempt([&] { goOn = Step(step.Number); });
        if (!goOn)
            return false;
    }
    return true;
}

bool StartUp::Step(int number)
{
    switch (number) {
    case 1:
        m_window.SetTestMode(IsTestMode(m_commandLine));
        break;
    case 2:
        return !m_oneInstance || m_oneInstance();
    case 3:
        InitColours();
        break;
    case 4:
        m_window.SetSchemaMenuEnabled(false);
        break;
    case 5:
        m_window.LoadSettings();
        break;
    case 6:
        break; // gDataTypes is a constant table, and stands before any code runs
    case 7:
        m_window.picSplit->SetBorder(1, 10);
        m_window.picSplit->SetBorder(3, 150);
        m_window.picSplit->SetOrientation(spltVertical);
        break;
    case 8:
        InitKeywords();
        LoadKeywords(QStringLiteral("VB"), gKeywords, QFileInfo(DataFile(QStringLiteral("Tokens.col"))).path());
        break;
    case 9:
        BuildSideBar(*m_window.eb);
        break;
    case 10:
        BuildMainToolbar(*m_window.cb);
        break;
    case 11:
        ApplySkin(&m_window);
        break;
    case 12:
        ::SetStatus(QString());
        break;
    case 13:
        if (Show)
            Show();
        m_window.ProcessCommandLine(m_commandLine);
        break;
    }
    return true;
}
