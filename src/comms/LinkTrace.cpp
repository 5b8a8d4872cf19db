#include "LinkTrace.h"

Q_LOGGING_CATEGORY(linkEvents, "hct.link", QtInfoMsg)
Q_LOGGING_CATEGORY(linkFrames, "hct.link.frames", QtInfoMsg)
