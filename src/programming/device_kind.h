// The generations of the device: what each is called, what it takes and how its updates run, in one table.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/bytes.h"
#include "programming/block_transfer.h"
#include "programming/loader_requests.h"
#include "programming/program_file.h"
#include "programming/refusal.h"
#include "tables/table_images.h"

namespace ox {

/// How a generation takes its tables.
struct TableUpdateKind {
  /// Its loader accepts one of them.
  std::span<const LoaderRequest> kindQueries;
  /// The image that is written into it.
  TableImage TableImages::*image;
  /// The image is too long for the device, or cannot be built.
  std::string_view overflow;
  std::string_view unusable;
};

/// A device of another type than the one to be updated: `type` is what its type begins with, empty for any.
struct TypeRefusal {
  BytesView type;
  std::string_view message;
};

/// What the loader must accept before the first block.
struct Preparation {
  LoaderRequest request;
  std::string_view step;  // what it is called
  bool marked;            // a mark goes before it
  Refusal refusal;
};

/// How a generation takes its program.
struct ProgramUpdateKind {
  std::string_view windowName;
  std::string_view caption;
  std::string_view filePattern;
  ProgramFormat format;

  /// The connection test found no device.
  std::string_view notFound;
  /// The loader is tried before the connection test: the device may have been switched on in its programming
  /// mode, or be left there by an earlier attempt.
  bool triesLoaderFirst;
  /// The loader is asked once more before the preparations.
  bool probesLoader;
  /// What another type leads to: the first entry that fits.
  std::span<const TypeRefusal> otherTypes;
  /// In their order.
  std::span<const Preparation> preparations;
  BlockTransfer transfer;
};

/// A generation that can be updated. Messages are UTF-8, ready to be shown.
struct DeviceKind {
  BytesView type;         // what the type in its identification begins with: "OX 2"
  std::string_view name;  // for its user: "OX II"
  TableUpdateKind tables;
  ProgramUpdateKind program;
};

/// All of them, the oldest first: in this order the loader is asked for its kind.
std::span<const DeviceKind> DeviceKinds();

/// The kind of a device by its type, or by its whole identification; null when it is none of them.
const DeviceKind* FindDeviceKind(BytesView type);

/// The kind whose program window is opened for a device of this type: an unknown type leads to the oldest
/// window, which tells the user.
const DeviceKind& ProgramWindowKind(BytesView type);

}  // namespace ox
