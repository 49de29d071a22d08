// Layout of the modem test's records.
#include "modem/modem_requests.h"

#include "platform/line_ends.h"

namespace ox {
namespace {

constexpr BytesView kDateMark = "*";
constexpr BytesView kValueMark = "#";

}  // namespace

Bytes BuildDateRequest(BytesView akz, BytesView date, BytesView time) {
  Bytes request(kDateMark);
  request.append(akz).append(" ").append(date).append(" ").append(time).append(1, kCr);
  return request;
}

Bytes BuildValueRequest(BytesView measuringPoint, BytesView parameter, BytesView qualityFlag,
                        BytesView value) {
  Bytes request(kValueMark);
  request.append(measuringPoint).append(": ").append(parameter).append(" ");
  request.append(qualityFlag).append(" ").append(value).append(" ").append(1, kCr);
  return request;
}

}  // namespace ox
