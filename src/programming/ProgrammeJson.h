#pragma once

#include "Programme.h"
#include "ProgrammeCheck.h"
#include "ProgrammeDifference.h"

#include <QJsonArray>
#include <QJsonObject>

/// Programmes, and what is said about them, as JSON for scripts. Keys and day names are English.
namespace ProgrammeJson {

/// {"model":"HCT-7200","outputs":[{"output":1,"duration":8,"mode":0,"alarms":[
/// {"time":"09:05","days":["monday","friday"]}]}],"holidays":[{"day":1,"month":5}],
/// "vacations":[{"from":{"day":23,"month":12},"to":{"day":7,"month":1}}]}. Alarms without days and
/// unused dates are left out; alarms are in the order of the rows.
QJsonObject object(const Programme& programme, ClockModel model);

/// [{"kind":"changed","what":"alarm","output":1,"rowBefore":3,"rowAfter":1,"text":"..."}]. Rows are
/// counted from 1. "output" and the rows are left out where there are none.
QJsonArray array(const QList<ProgrammeDifference::Entry>& entries);

/// [{"severity":"error","line":4,"text":"..."}]. "line" is left out for the file as a whole.
QJsonArray array(const QList<ProgrammeCheck::Problem>& problems);

} // namespace ProgrammeJson
