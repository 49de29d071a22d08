// An update window with tables at hand, in front of a simulated device.
#pragma once

#include "programming/demo_file.h"
#include "programming/update_rig.h"
#include "programming/updatetab.h"

namespace ox::test {

struct TableTexts {
  Bytes mes, par, zuo;
};

/// Two points of one office that share two parameters.
inline const TableTexts kSmallTables{
    "/S/\"1\" /A/\"Amt\" /Z/\"123\"\n"
    "/N/\"12345678\" /D/\" 0012\" /M/\"-0012\" /T/\"Pegel\"\n"
    "/N/\"00000002\" /D/\" 0000\" /M/\" 0000\" /T/\"Wehr\"\n/B/ Ende\n/E/ ",
    "/P/\"0001\" /T/\"Pegel\" /M/\"cm \"\n/P/\"0002\" /T/\"Abfluss\" /M/\"m/s\"\n/E/ ",
    "/N/\"12345678\" /P/\"0001,0002\"\n/N/\"00000002\" /P/\"0002\"\n/E/ "};

inline TableTexts DemoTables() {
  return {DemoFile("netz.mes"), DemoFile("netz.par"), DemoFile("netz.zuo")};
}

struct TableUpdateRig : UpdateRig {
  TableUpdateRig() { host.windows.OpenMain(window); }

  void Load(const TableTexts& tables) {
    host.files.content["/netz.mes"] = tables.mes;
    host.files.content["/netz.par"] = tables.par;
    host.files.content["/netz.zuo"] = tables.zuo;
    Choose(window.ChMes, "/netz.mes");
    Choose(window.ChPar, "/netz.par");
    Choose(window.ChZuo, "/netz.zuo");
  }

  updatetab window{host.host, subs, chooser};
};

/// A device that takes its image after this kind query: "a", "b" or "c".
inline sim::DeviceOptions DeviceOfKind(char kind) {
  sim::DeviceOptions options;
  options.generation = kind == 'a' ? 2 : 3;
  options.loaderKinds = Bytes(1, kind);
  return options;
}

}  // namespace ox::test
