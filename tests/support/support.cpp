#include "FakeSerialPort.h"
#include "FakeTimer.h"
