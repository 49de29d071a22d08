// The records that the modem test sends. The fields have passed their checks; all texts are bytes.
#pragma once

#include "platform/bytes.h"

namespace ox {

/// Office code, date and time: "*123 161106 1430" and CR.
Bytes BuildDateRequest(BytesView akz, BytesView date, BytesView time);

/// One measured value: "#12345678: 0012 s  12.3 " and CR. The blank before the CR belongs to it.
Bytes BuildValueRequest(BytesView measuringPoint, BytesView parameter, BytesView qualityFlag,
                        BytesView value);

}  // namespace ox
