// The commands that move data: each opens its window beside the main one.
#include "app/MainCommands.h"
#include "app/mdiMother.h"
#include "data/modMain.h"
#include "movement/frmDTS.h"
#include "movement/frmImportFlatFile.h"

namespace {

void ShowFree(QWidget *window)
{
    window->show();
    window->activateWindow();
}

void OpenTransfer(mdiMother &window, bool import)
{
    if (!IsConnected(true))
        return;
    auto *transfer = new frmDTS(&window);
    transfer->SetMode(import);
    ShowFree(transfer);
}

} // namespace

void ImportFlatFile(mdiMother &window)
{
    if (IsConnected(true))
        ShowFree(new frmImportFlatFile(&window));
}

void ImportTable(mdiMother &window)
{
    OpenTransfer(window, true);
}

void ExportTable(mdiMother &window)
{
    OpenTransfer(window, false);
}
