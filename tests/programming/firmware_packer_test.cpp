// The packer's window: paths, files and messages; and the way of a loader file into the device.
#include "programming/firmware_packer.h"

#include <gtest/gtest.h>

#include "programming/program_update_rig.h"

namespace ox::test {
namespace {

using Strings = std::vector<std::string>;

const std::string kDone = "Vorgang erfolgeich beendet !";

class FirmwarePacker : public testing::Test {
 protected:
  FirmwarePacker() { rig_.host.files.content["/neu.LDR"] = DemoFile("OX3NEU.LDR"); }

  Strings Pack(const std::string& source, const std::string& target) {
    FirmwareOX3Verpacken window(rig_.host.host, rig_.subs.settings);
    rig_.host.windows.OnShown(window.Name(), [&](Window&) {
      window.TextQuelle.Edit(source);
      window.TextZiel.Edit(target);
      window.CoStart.Click();
      window.RequestClose();
    });
    rig_.host.windows.ShowModal(window);
    return rig_.host.windows.TakeMessages();
  }

  Bytes& File(const std::string& path) { return rig_.host.files.content[path]; }

  ProgramUpdateRig rig_{3};
};

TEST_F(FirmwarePacker, PacksAFileThatTheUpdateWritesIntoTheDevice) {
  File("/packed.pr3") = "older";
  EXPECT_EQ(Pack("/neu", "/packed"), Strings{kDone});
  rig_.path = "/packed.pr3";
  rig_.Load();
  rig_.Connect(DeviceOfGeneration(3));
  rig_.window().ProStart.Click();
  EXPECT_EQ(rig_.host.windows.TakeMessages(), Strings{"Programmupdate erfolgreich abgeschlossen!"});
  EXPECT_EQ(rig_.device->Memory().SoftwareVersion(), "V5.20 22.11.2026");
}

TEST_F(FirmwarePacker, SaysWhatItCouldNotReadOrWrite) {
  File("/falsch.LDR") = ":01000000ff\r\n:00000001FF\r\n";
  // The sound file, behind more line ends than any loader file is long.
  File("/lang.LDR") = DemoFile("OX3NEU.LDR") + Bytes(5 * 1024 * 1024, '\n');
  File("/alt.pr3") = "older";
  EXPECT_EQ(Pack("/fehlt", "/alt"), Strings{"Fehler beim Öffnen von /fehlt.LDR !"});
  EXPECT_EQ(Pack("", "/alt"), Strings{"Fehler beim Öffnen von .LDR !"});
  EXPECT_EQ(Pack("/falsch", "/alt"), Strings{"Fehler beim Lesen der Datei /falsch.LDR !"});
  EXPECT_EQ(Pack("/lang", "/alt"), Strings{"Fehler beim Lesen der Datei /lang.LDR !"});
  rig_.host.files.writable = false;
  EXPECT_EQ(Pack("/neu", "/alt"), Strings{"Fehler beim Öffnen von /alt.pr3 !"});
  EXPECT_EQ(File("/alt.pr3"), "older");
}

TEST_F(FirmwarePacker, KeepsThePathsOfTheLastStart) {
  rig_.subs.settings.SourcePath = "/alte Quelle";
  rig_.subs.settings.TargetPath = "/altes Ziel";
  FirmwareOX3Verpacken window(rig_.host.host, rig_.subs.settings);
  rig_.host.windows.OnShown(window.Name(), [&](Window&) {
    EXPECT_EQ(window.TextQuelle.Text(), "/alte Quelle");
    EXPECT_EQ(window.TextZiel.Text(), "/altes Ziel");
    window.TextQuelle.Edit("/nur getippt");
    window.RequestClose();
  });
  rig_.host.windows.ShowModal(window);
  EXPECT_EQ(rig_.subs.settings.SourcePath, "/alte Quelle");
  Pack("/fehlt", "/Gerät");
  EXPECT_EQ(rig_.subs.settings.SourcePath, "/fehlt");
  EXPECT_EQ(rig_.subs.settings.TargetPath, "/Gerät");
}

}  // namespace
}  // namespace ox::test
