#pragma once
// The names by which the main window reaches its children, in three lists by what goes with a call, and the set of
// those that one class of windows answers. The set is made by the compiler from what the class overrides (AnswersOf),
// so that nobody keeps a list of it. A new name is one virtual operation of ChildWindow and one word here.

#include <QString>
#include <QStringList>
#include <bitset>
#include <type_traits>

class ChildWindow;

// Without arguments: a menu's row reaches them by name.
#define CHILD_COMMANDS(NAME)                                                                                           \
    NAME(mnuCopy)                                                                                                      \
    NAME(mnuCut)                                                                                                       \
    NAME(mnuPaste)                                                                                                     \
    NAME(mnuUndo)                                                                                                      \
    NAME(mnuSelectAll)                                                                                                 \
    NAME(mnuFind)                                                                                                      \
    NAME(mnuReplace)                                                                                                   \
    NAME(mnuOpen)                                                                                                      \
    NAME(mnuSave)                                                                                                      \
    NAME(mnuPrint)                                                                                                     \
    NAME(mnuChart)                                                                                                     \
    NAME(SnapShot)                                                                                                     \
    NAME(ChangeTitle)                                                                                                  \
    NAME(ChangeFootNote)                                                                                               \
    NAME(mnuClearLog)                                                                                                  \
    NAME(mnuMax_Click)                                                                                                 \
    NAME(mnuMin_Click)                                                                                                 \
    NAME(mnuAvg_Click)                                                                                                 \
    NAME(mnuSum_Click)                                                                                                 \
    NAME(mnuFitColumns)                                                                                                \
    NAME(mnuAddTable)                                                                                                  \
    NAME(SaveState)
// With a number, which the row gives.
#define CHILD_NUMBERED(NAME)                                                                                           \
    NAME(Parse)                                                                                                        \
    NAME(ChangeChartType)
// With what the caller knows.
#define CHILD_OTHERS(NAME)                                                                                             \
    NAME(InsertString)                                                                                                 \
    NAME(ToolBar)                                                                                                      \
    NAME(DynaMenuItemClick)                                                                                            \
    NAME(RefreshForm)
#define CHILD_PROTOCOL(NAME) CHILD_COMMANDS(NAME) CHILD_NUMBERED(NAME) CHILD_OTHERS(NAME)

enum class ChildName
{
#define NAME(name) name,
    CHILD_PROTOCOL(NAME)
#undef NAME
        Count
};

QString ToText(ChildName name);

class ChildNames
{
public:
    constexpr ChildNames() = default;
    ChildNames &Add(ChildName name) { return m_names.set(size_t(name)), *this; }
    bool Has(ChildName name) const { return m_names.test(size_t(name)); }
    QStringList List() const; // in the order of the lists above
    bool operator==(const ChildNames &) const = default;

private:
    std::bitset<size_t(ChildName::Count)> m_names;
};

// The member that a name means in a class is its base's when the class does not override it.
template <typename Form, typename Result, typename... Arguments>
constexpr bool IsOverride(Result (Form::*)(Arguments...))
{
    return !std::is_same_v<Form, ChildWindow>;
}

template <typename Form> ChildNames AnswersOf()
{
    ChildNames names;
#define NAME(name)                                                                                                     \
    if constexpr (IsOverride(decltype(&Form::name){}))                                                                 \
        names.Add(ChildName::name);
    CHILD_PROTOCOL(NAME)
#undef NAME
    return names;
}

// Calls one of the first two lists; a number goes to the second alone. Any other name: nothing happens. What the window
// raises comes through.
void CallChild(ChildWindow &child, ChildName name, int number = 0);
