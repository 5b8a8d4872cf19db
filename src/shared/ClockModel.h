#pragma once

/// The two models. The HCT-7200 has inputs and 5 day flags for an alarm, the HCT-7300 no inputs and
/// 9 flags. Their alarms have different bits on the line. Duration and mode of an alarm block are
/// set by the operator for the HCT-7300 only.
enum class ClockModel { Hct7200, Hct7300 };
