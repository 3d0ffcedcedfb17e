#include "frame/Shell.h"

namespace {

Shell *g_shell = nullptr;

} // namespace

Shell::~Shell()
{
    if (g_shell == this)
        g_shell = nullptr;
}

Shell &Shell::Current()
{
    static Shell nobody;
    return g_shell ? *g_shell : nobody;
}

void Shell::Install(Shell *shell)
{
    g_shell = shell;
    StatusBoard::Install(shell);
}

void Shell::SetCountPanel(const QString &) {}
void Shell::SetHourglass(bool) {}
void Shell::SetSchemaMenuEnabled(bool) {}
void Shell::AddChild(ChildWindow *) {}
QList<ChildWindow *> Shell::Children() const
{
    return {};
}
ChildWindow *Shell::ActiveChild() const
{
    return nullptr;
}
QRect Shell::ClientArea() const
{
    return QRect(0, 0, 800, 600);
}
QWidget *Shell::MainWindow() const
{
    return nullptr;
}
ExplorerBar *Shell::SideBar() const
{
    return nullptr;
}
CommandBar *Shell::Commands() const
{
    return nullptr;
}
bool Shell::TestMode() const
{
    return false;
}
void Shell::ShowMenu(const QString &, const QPoint &, const QString &) {}
void Shell::RefreshMenus() {}
