#pragma once

#include <QString>

#include "values/Value.h"

/// Carries out a request {"op", "args", "simplifiers", "ignorePlurals"}: installs the simplifier table that
/// it names, or none if it names neither "simplifiers" nor "ignorePlurals", and answers what the operation
/// "op" makes of "args". Bytes are given and answered in hexadecimal, dates in ISO form, an absent text as
/// null. Null with a line in `error` for an unknown operation and for arguments of a wrong number or type.
/// One thread.
Value answerTextRequest(const Dictionary &request, QString *error);
