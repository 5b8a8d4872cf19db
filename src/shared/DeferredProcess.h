#pragma once

/// A client of the timer service: what it does once every so many idle ticks.
class DeferredProcess {
public:
    virtual ~DeferredProcess() = default;
    virtual void ProcesoDiferido() = 0;
};
