// The device's characters and those of table files, mapped in both directions.
#pragma once

namespace ox {

/// The device's code of a Windows-1252 character: umlauts and sharp s stand in their places of DIN 66003, and
/// three characters at glyph positions 28, 29 and 31. A character that is not among them keeps its code.
char DeviceCharacter(char fileCharacter);

/// The Windows-1252 character of a device code, the reverse of DeviceCharacter.
char FileCharacter(char deviceCharacter);

/// Whether the device can show this code of its own.
bool DeviceShows(char deviceCharacter);

}  // namespace ox
