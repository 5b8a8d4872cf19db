#pragma once

/// The two members of the family. They differ in their inputs, in the flags of an alarm, in how an
/// alarm travels, and in who sets a block's duration and mode.
enum class ClockModel { Hct7200, Hct7300 };
