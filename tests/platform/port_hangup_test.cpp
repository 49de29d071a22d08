// A cable that is pulled in the middle of the use of a port.
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "platform/posix/posix_serial_port.h"
#include "platform/pseudo_terminal.h"
#include "platform/scratch_folder.h"

namespace ox {
namespace {

class PortHangUpTest : public testing::Test {
 protected:
  /// After the error the port is closed, nothing is left for Rest to wait on, and a new line can be opened.
  void ExpectReusable() {
    EXPECT_FALSE(port_->PortOpen());
    EXPECT_TRUE(openPorts_.Descriptors().empty()) << "a dead line would keep Rest awake";
    PseudoTerminal next;
    port_->Open();
    port_->Output("S");
    EXPECT_EQ(next.Read(1), "S");
    port_->Close();
  }

  ScratchFolder scratch_;
  OpenPorts openPorts_;
  std::unique_ptr<SerialPort> port_ = PosixSerialPorts(openPorts_).Create();
};

TEST_F(PortHangUpTest, TheNextOperationReportsIt) {
  const std::function<void()> operations[] = {[this] { port_->Input(); }, [this] { port_->Output("S"); },
                                              [this] { port_->SetModemLine(true); }};
  for (const auto& operation : operations) {
    PseudoTerminal farEnd;
    port_->Open();
    operation();
    farEnd.HangUp();
    EXPECT_THROW(operation(), PortError);
    ExpectReusable();
  }
}

TEST_F(PortHangUpTest, ClosingSaysNothingAndDoesNotWait) {
  PseudoTerminal farEnd;
  port_->SetSettings("300,O,7,1");
  port_->Open();
  port_->Output(Bytes(2000, 'x'));  // more than a minute on the line
  farEnd.HangUp();
  port_->Close();
  ExpectReusable();
}

TEST_F(PortHangUpTest, ADestroyedPortLeavesNothingBehind) {
  PseudoTerminal farEnd;
  port_->Open();
  farEnd.HangUp();
  port_ = PosixSerialPorts(openPorts_).Create();
  ExpectReusable();
}

}  // namespace
}  // namespace ox
