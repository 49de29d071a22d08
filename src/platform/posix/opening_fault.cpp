// Reasons and advice, in words.
#include "platform/posix/opening_fault.h"

#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/port_errors.h"
#include "platform/posix/port_holder.h"
#include "platform/posix/port_names.h"

namespace ox {
namespace {

namespace fs = std::filesystem;

/// Whether the group has the user among its members, in force from his next login on.
bool Lists(const group& entry, uid_t user) {
  const passwd* const account = getpwuid(user);
  if (account == nullptr) return false;
  for (char** member = entry.gr_mem; *member != nullptr; ++member)
    if (std::string_view(*member) == account->pw_name) return true;
  return false;
}

/// What helps where the device's group has rights that the user lacks; empty when the user belongs to it or
/// it would not help.
std::string GroupAdvice(const std::string& path) {
  constexpr mode_t kGroupMayUse = S_IRGRP | S_IWGRP;
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || (status.st_mode & kGroupMayUse) != kGroupMayUse) return {};
  const bool member = status.st_gid == getegid() || group_member(status.st_gid) != 0;
  if (member || status.st_uid == geteuid()) return {};  // the owner's rights go before the group's
  const group* const entry = getgrgid(status.st_gid);
  if (entry == nullptr)
    return "Benutzer in die Gruppe " + std::to_string(status.st_gid) + " aufnehmen, neu anmelden";
  const std::string name = entry->gr_name;
  if (Lists(*entry, geteuid())) return "Neu anmelden: Erst dann gilt die Gruppe " + name;
  return "Benutzer in die Gruppe " + name + " aufnehmen, neu anmelden";
}

PortError MissingFault(const std::string& path) {
  std::error_code failed;
  if (!fs::is_symlink(path, failed)) return NoSuchPort();
  return PortError(
      "nicht vorhanden",
      "Der Eintrag " + path + " im Arbeitsordner zeigt darauf: Adapter einstecken oder den Eintrag löschen");
}

}  // namespace

PortError OpeningFault(int error, const std::string& path, const HostFolders& host) {
  switch (error) {
    case EACCES:
    case EPERM:
      return PortError("keine Zugriffsrechte", GroupAdvice(path));
    case EBUSY:
    case EWOULDBLOCK:
      return Taken(HolderOf(host, path).value_or(""));
    case ENOENT:
    case ENODEV:
    case ENXIO:
    case EIO:
    case ELOOP:
    case ENOTDIR:
      return MissingFault(path);
    case ENOTTY:
    case EISDIR:
      return NotSerial(IsEntry(path) ? "Den Eintrag " + path + " im Arbeitsordner löschen" : "");
    default:
      return PortError(std::generic_category().message(error));
  }
}

}  // namespace ox
