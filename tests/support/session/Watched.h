#pragma once

#include "Invariants.h"

#include <utility>

/// A client of the timer service that tells the invariants of its calls.
template<typename Client, Asker asker>
class Watched final : public Client {
public:
    template<typename... Arguments>
    explicit Watched(Invariants& invariants, Arguments&&... arguments)
        : Client(std::forward<Arguments>(arguments)...), m_invariants(invariants)
    {}

    void ProcesoDiferido() override
    {
        // A box may be open within the call, and this object destroyed under it.
        Invariants& invariants = m_invariants;
        invariants.calls(asker);
        Client::ProcesoDiferido();
        invariants.called();
    }

private:
    Invariants& m_invariants;
};
