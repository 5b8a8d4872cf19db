#include "SystemRegistry.h"

#ifdef Q_OS_WIN
#include "Win32Registry.h"
#else
#include "FileRegistry.h"
#endif

std::unique_ptr<Registry> systemRegistry()
{
#ifdef Q_OS_WIN
    return std::make_unique<Win32Registry>();
#else
    return std::make_unique<FileRegistry>(FileRegistry::defaultPath());
#endif
}
