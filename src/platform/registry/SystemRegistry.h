#pragma once

#include "Registry.h"

/// The registry of this system for this user: that of Windows, or a file.
std::unique_ptr<Registry> systemRegistry();
