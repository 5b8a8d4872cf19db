#pragma once

#include "Programme.h"

#include <QString>

/// How an edit is named for undo and redo, in Spanish and without a verb, from what differs.
struct EditName {
    /// "hora del aviso 3", "días del aviso 3", "festivo 2", "modo". Outputs 2 and 3 are named:
    /// "modo de la salida 2".
    QString name;
    /// The same for edits of the same field, which may be one step; empty when more than one field
    /// differs. The hour and the minute of a time are one field, as are the days of an alarm.
    QString mergeKey;

    /// Both are empty when nothing differs.
    static EditName of(const Programme& before, const Programme& after);
};
