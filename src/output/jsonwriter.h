#pragma once

#include "jsonvalue.h"
#include "model/result.h"

#include <QByteArray>

// The one JSON writer of the app: members in ascending key order, two-space indentation,
// `"key" : value`, integers as integers, doubles in the shortest form that reads back
// exactly, UTF-8 without BOM, non-ASCII written as itself, "/" not escaped. Fails only for a
// number JSON cannot carry (NaN, infinity).
Result<QByteArray> encodeJson(const JsonValue &value);
