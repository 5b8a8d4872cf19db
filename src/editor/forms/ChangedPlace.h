#pragma once

#include "RowList.h"

/// The first row in which two programmes differ, in the order of the pages; nothing when they do
/// not. A difference of mode or duration counts as one of the first row.
std::optional<RowList::Target> changedPlace(const Programme& before, const Programme& after);
