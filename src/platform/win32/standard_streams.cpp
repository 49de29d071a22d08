// Streams that lead nowhere, in the place of missing ones.
#include "platform/standard_streams.h"

#include <io.h>

#include <cstdio>

#include "platform/win32/windows_api.h"

namespace ox {
namespace {

bool LeadsSomewhere(std::FILE* stream) {
  const int number = _fileno(stream);
  if (number < 0) return false;
  auto* const handle = reinterpret_cast<HANDLE>(_get_osfhandle(number));
  return handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

void Mend(std::FILE* stream, const char* mode) {
  // When this fails, the stream stays as it was: what is written to it is lost either way.
  if (!LeadsSomewhere(stream)) [[maybe_unused]]
    const auto* mended = std::freopen("NUL", mode, stream);
}

}  // namespace

StandardStreams::StandardStreams() {
  Mend(stdin, "r");
  Mend(stdout, "w");
  Mend(stderr, "w");
}

}  // namespace ox
