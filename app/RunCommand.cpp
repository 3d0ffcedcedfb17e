// What a row of CommandTable calls, and the status that it shows meanwhile.
#include "app/CommandTable.h"
#include "app/Menus.h"
#include "app/WindowTable.h"
#include "app/mdiMother.h"
#include "controls/Attempt.h"
#include "controls/CommandBar.h"
#include "data/modMain.h"
#include "frame/ChildWindow.h"
#include <QPointer>
#include <QScopeGuard>

namespace {

// The text says what is going on, and goes when that is done or declined; what the command itself said stays.
void WithStatus(const QString &text, const std::function<void()> &command)
{
    const QString before = LastStatus();
    if (!text.isEmpty())
        SetStatus(text);
    const auto done = qScopeGuard([&] {
        if (!text.isEmpty() && LastStatus() == text)
            SetStatus(before == text ? QString() : before);
    });
    command();
}

void OpenOnConnection(const QString &form)
{
    if (!IsConnected(true))
        return;
    const QPointer<ChildWindow> window = OpenChild(form);
    if (window)
        window->ShowChild();
}

} // namespace

void mdiMother::Run(const CommandRow &row)
{
    Attempt([&] {
        switch (row.Route) {
        case Calls::Main:
            return row.Main(*this);
        case Calls::Schema:
            return (schema.get()->*row.Schema)();
        case Calls::Rowset:
            return schema->Show(row.Rowset);
        case Calls::Window:
            return OpenOnConnection(QString::fromLatin1(row.Text));
        case Calls::Popup:
            return menus->Popup(QString::fromLatin1(row.Text), cb->PopupPosition(QString::fromLatin1(row.ButtonKey)));
        case Calls::Child:
        case Calls::Tool:
            break;
        case Calls::Nothing:
        case Calls::Group:
        case Calls::Separator:
            return;
        }
        const QPointer<ChildWindow> child = ActiveChild();
        if (!child)
            return;
        WithStatus(QString::fromLatin1(row.Status), [&] {
            if (row.Route == Calls::Child)
                CallChild(*child, row.Answer, row.Number);
            else
                child->ToolBar(QString::fromLatin1(row.Text));
        });
    });
}

bool mdiMother::Command(const char *name)
{
    const CommandRow *row = FindCommand(name);
    if (row)
        Run(*row);
    return row;
}

void mdiMother::mnuEdit_Click()
{
    menus->Follow("mnuEdit");
}
