#include "FakeSerialPort.h"
#include "FakeTickTimer.h"
#include "FakeTimer.h"
