// The device's characters and those of table files, mapped in both directions.
#pragma once

#include "platform/bytes.h"

namespace ox {

/// The device's code of a Windows-1252 character: umlauts and sharp s stand in their places of DIN 66003, and
/// three characters at glyph positions 28, 29 and 31. A character that is not among them keeps its code.
char DeviceCharacter(char fileCharacter);

/// The Windows-1252 character of a device code, the reverse of DeviceCharacter.
char FileCharacter(char deviceCharacter);

/// A text in the device's codes, in Windows-1252.
Bytes FileCharacters(BytesView deviceText);

/// Whether the device can show this code of its own.
bool DeviceShows(char deviceCharacter);

}  // namespace ox
