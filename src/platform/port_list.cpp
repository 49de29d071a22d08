// A port in words.
#include "platform/port_list.h"

#include "platform/port_fault.h"

namespace ox {
namespace {

std::string InWords(const PortEntry& entry) {
  switch (entry.use) {
    case PortUse::kFree:
      return "frei";
    case PortUse::kTaken:
      return entry.holder.empty() ? "belegt" : "belegt von " + entry.holder;
    case PortUse::kNoRights:
      return "keine Zugriffsrechte";
    case PortUse::kNotSerial:
      return "keine serielle Schnittstelle";
    case PortUse::kPresent:
      return "vorhanden";
    case PortUse::kMissing:
      break;
  }
  return "nicht vorhanden";
}

}  // namespace

std::string Identity(int number, const PortEntry& entry) {
  std::string text = PortName(number);
  if (!entry.device.empty()) text += " ist " + entry.device;
  if (!entry.product.empty()) text += " (" + entry.product + ")";
  return text;
}

std::string Description(int number, const PortEntry& entry) {
  return Identity(number, entry) + ": " + InWords(entry);
}

}  // namespace ox
