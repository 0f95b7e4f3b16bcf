// Ribbon (menu) configuration files.
#include "FuzzInput.h"
#include "MenuBarManager.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString path = FuzzInput::writeFile(QStringLiteral("menu.json"), data, size);
    QString error;
    MenuBarManager::ReadMenuBarInfoFromFileEx(path, &error);
    return 0;
}
