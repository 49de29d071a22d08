// What the device's loader can be asked, and how long each answer may take.
#pragma once

namespace ox {

/// A request of the loader: its letter in the frame, and the time-out of its answer in whole seconds.
struct LoaderRequest {
  char letter;
  int seconds;
};

namespace request {

// Whether the loader listens: the first verifies the program, the second the tables.
constexpr LoaderRequest kProbe{'V', 1};
constexpr LoaderRequest kTableProbe{'W', 1};

// Which images and programs the device takes.
constexpr LoaderRequest kOlderKind{'a', 1};
constexpr LoaderRequest kGeneration3Kind{'b', 1};
constexpr LoaderRequest kLaterGeneration3Kind{'c', 1};

// Preparation of the area that is written next, of the program's in two steps.
constexpr LoaderRequest kPrepareTables{'2', 30};
constexpr LoaderRequest kPrepareProgramFirst{'0', 30};
constexpr LoaderRequest kPrepareProgramSecond{'1', 30};

// One block.
constexpr LoaderRequest kWriteTables{'P', 3};
constexpr LoaderRequest kWriteProgram2{'P', 5};
constexpr LoaderRequest kWriteProgram3{'P', 10};

// After the last block.
constexpr LoaderRequest kVerifyProgram{'V', 1};
constexpr LoaderRequest kVerifyTables{'W', 1};
constexpr LoaderRequest kTakeOver{'L', 3};
constexpr LoaderRequest kLeaveLoader{'X', 1};

}  // namespace request
}  // namespace ox
