// What differs between the program updates of the two device generations.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "programming/program_file.h"
#include "programming/update_window.h"

namespace ox {

/// One kind of program update. Messages are UTF-8, ready to be shown.
struct ProgramUpdate {
  std::string_view windowName;
  std::string_view caption;
  std::string_view filePattern;
  ProgramFormat format;

  /// The loader is tried before the connection test: the device may have been switched on in its programming
  /// mode, or be left there by an earlier attempt.
  bool triesLoaderFirst;
  /// The loader is asked once more before the device is asked for its kind.
  bool probesLoader;

  /// What the device's type must begin with, and what another type leads to: the first entry that the type
  /// begins with.
  struct TypeRefusal {
    BytesView type;  // empty: any
    std::string_view message;
  };
  BytesView deviceType;
  std::vector<TypeRefusal> otherTypes;

  /// What the loader must accept, one after the other, before the first block.
  struct Preparation {
    LoaderRequest request;
    bool marked;  // the status line grows before it
    std::string refusal;
    bool numbered = true;  // the refusal bears a number: it is told of a port that breaks as well
  };
  std::vector<Preparation> preparations;

  BlockTransfer transfer;
  std::string blockRefusal;
};

/// Of generation II, from ".pro" files.
const ProgramUpdate& ProgramUpdate2();
/// Of generation III, from ".pr3" files.
const ProgramUpdate& ProgramUpdate3();

/// The connection test found no device. Both windows say it so.
std::string ProgramUpdateConnectionMessage();

}  // namespace ox
