#pragma once
// The start of the program: thirteen steps, strictly in this order. Interface thread; a step that fails is skipped.

#include <QString>
#include <functional>
#include <span>

class mdiMother;

struct StartStep
{
    int Number;
    const char *Name;
};
std::span<const StartStep> StartSteps();

class StartUp
{
public:
    // oneInstance gives false when another instance of the program runs; null is not asked (unit tests).
    StartUp(mdiMother &window, QString commandLine, std::function<bool()> oneInstance = {});

    std::function<void(int number)> BeforeStep; // a test looks on; may be empty
    std::function<void()> Show;                 // shows the window, before the command line is handled; may be empty

    // False: another instance runs, and the program ends at once without a message.
    bool Run();

private:
    bool Step(int number);
    mdiMother &m_window;
    QString m_commandLine;
    std::function<bool()> m_oneInstance;
};
