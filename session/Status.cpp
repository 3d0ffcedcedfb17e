#include "session/Status.h"

namespace {

StatusBoard *g_board = nullptr;
QString g_lastStatus;

} // namespace

StatusBoard::~StatusBoard()
{
    if (g_board == this)
        g_board = nullptr;
}

StatusBoard &StatusBoard::Current()
{
    static StatusBoard nobody;
    return g_board ? *g_board : nobody;
}

void StatusBoard::Install(StatusBoard *board)
{
    g_board = board;
}

void StatusBoard::SetStatus(const QString &) {}
void StatusBoard::SetStop(const std::function<void()> &) {}

void SetStatus(const QString &text)
{
    g_lastStatus = text;
    StatusBoard::Current().SetStatus(text);
}

QString LastStatus()
{
    return g_lastStatus;
}
