#pragma once

/// A client of the timer service. `ProcesoDiferido` is called once in each period while the client
/// is active. A period is counted in ticks of 1 ms on which the link is idle. A call sends one
/// request at most.
class DeferredProcess {
public:
    virtual ~DeferredProcess() = default;
    virtual void ProcesoDiferido() = 0;
};
