// What the dialogues on the line are made of: their characters, and how long each of their steps may take.
// What the loader is asked, and how long it may take for each answer, stands in
// programming/loader_requests.h.
#pragma once

#include <cstddef>

#include "platform/bytes.h"
#include "platform/clock.h"

namespace ox {

// Characters that stand for a whole message. The first two mean the same to the device, its loader and a
// modem.

constexpr BytesView kWakeUp = "S";
/// Yes: awake and ready for a request, a reply taken, a block accepted.
constexpr BytesView kYes = "A";
/// No: not ready, refused, or a dialogue that failed.
constexpr BytesView kNo = "N";
/// The far end ends the dialogue; there is no answer to it.
constexpr BytesView kEndOfDialogue = "R";
/// A modem says both at once.
constexpr BytesView kNoAndEndOfDialogue = "NR";
/// The line behind the last record of several.
constexpr BytesView kEndOfRecords = "E\r";
/// Asks for type and version of the device.
constexpr BytesView kIdentify = "K";
/// Asks the device, in its text dialogue, for its loader; and what it answers at the loader's settings.
constexpr BytesView kUpdateRequest = "S@UPDATEREQ\r";
constexpr BytesView kUpdateAcknowledgement = "@UPDATEACK\r";

// How long is waited, in seconds. Whole numbers where the rule of the wait compares them with the clock
// itself.

/// For an answer to the wake-up, and between two characters of a reply.
constexpr int kDialogueWait = 1;
/// Between an "R" and what belongs to the same line: a character takes 4.2 ms at 2400 baud, and adapters hand
/// on what they have every 16 ms.
constexpr Seconds kRestOfLineWait = 0.05F;
/// The connection test: for the wake-up; and for the identification, both from the same start.
constexpr Seconds kSearchWakeUpWait = 0.5F;
constexpr Seconds kIdentificationWait = 1.0F;
/// The loader: for the acknowledgement of kUpdateRequest, and for an answer to the wake-up.
constexpr int kAcknowledgementWait = 5;
constexpr int kLoaderWakeUpWait = 1;
/// The modem: how long its line is switched off, and for what it says then; WaitForInput waits 1 s instead of
/// the 10, except in the first seconds of a day.
constexpr Seconds kModemPause = 1.0F;
constexpr int kModemCallWait = 10;

/// How often a dialogue sends the wake-up.
constexpr int kWakeUpTries = 3;

/// Bytes. A longer reply, identification or acknowledgement is cut off: the wait ends as by silence.
constexpr std::size_t kLongestReply = 1'048'576;

}  // namespace ox
