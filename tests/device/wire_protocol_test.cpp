#include <gtest/gtest.h>

#include <tuple>

#include "boxsim/frames.h"
#include "device/command_queue.h"
#include "device/wire_protocol.h"
#include "sensors/logic_fixture.h"

namespace nbx {
namespace {

using boxsim::EndOfReplyFrame;
using boxsim::Frame;

// Received bytes given by hand; one command in flight, one more waiting behind it.
class WireProtocol : public test::LogicFixture {
 protected:
  WireProtocol() {
    QueueCommand(nm, "S");
    QueueCommand(nm, "T");
  }
  void Receive(const std::string& bytes) {
    link.pending += bytes;
    OnComm(nm);
  }
  void Reply(char type, std::string_view data, char subType = ' ') {
    Receive(Frame(type, data, subType) + EndOfReplyFrame());
  }
};

TEST_F(WireProtocol, ByteByByteYieldsTheFramesAndReleasesTheNextCommandOnce) {
  const std::string reply = Frame('3', "512") + Frame('4', "40000") + EndOfReplyFrame();
  for (char byte : reply) Receive(std::string(1, byte));
  EXPECT_EQ(
      std::tuple(nm.state.SamplesAmbient.values[0], nm.state.SamplesLDR.values[0], nm.state.SamplesLDR.count),
      std::tuple(512.0, 40000.0, 1));
  EXPECT_EQ(link.written, (std::vector<std::string>{"S!", "T!"}));
}

TEST_F(WireProtocol, ResynchronisesOnlyOnTheFirstStartByteAndReadsPastTheEndOfReply) {
  // Garbage before the first "!" is dropped. A stray byte between frames shifts the rest of
  // the run: its frames are not understood, even where a byte of noise sits at the type's
  // place, and the end-of-reply frame is lost with them.
  Receive("\x13\xffxx" + Frame('1', "-1520") + "#8" + Frame('1', "-1600") + EndOfReplyFrame());
  EXPECT_EQ(std::tuple(nm.state.SamplesSkyIR.values[0], nm.state.SamplesSkyIR.count, link.written.size(),
                       nm.state.SQMPresent),
            std::tuple(-1520.0, 1, 1u, false));
  // The next send empties the buffer and the run is read right again.
  SendNextCommand(nm);
  ASSERT_EQ(link.written.back(), "T!");
  Reply('2', "1234");
  EXPECT_EQ(nm.state.SamplesSkySensor.values[0], 1234);
  // Frames behind the end-of-reply are still acted on.
  Receive(Frame('1', "-1520") + EndOfReplyFrame() + Frame('Y', ""));
  EXPECT_EQ(nm.state.Value_Switch, 1);
}

TEST_F(WireProtocol, SampleFramesTheirMarksAndDamagedNumbers) {
  SiteState& s = nm.state;
  Reply('1', "10000");
  Reply('1', "10000.5");
  Reply('1', "12x4");  // damaged: its slot keeps what it held
  // A sixth sample of a cycle of five is dropped.
  for (const char* v : {"1", "2", "3"}) Reply('1', v);
  EXPECT_EQ(s.SamplesSkyIR.values, (std::vector<double>{99900, 10000.5, 0, 1, 2}));

  // Noise shaped like a sky-quality frame does not declare the meter.
  Receive(Frame('8', "\x8f!k\x02") + EndOfReplyFrame());
  EXPECT_FALSE(s.SQMPresent);
  Receive(Frame('8', " 250000 ") + Frame('R', "3300") + EndOfReplyFrame());
  EXPECT_TRUE(s.SQMPresent);
  EXPECT_EQ(std::tuple(s.SamplesSQM.values[0], s.SamplesRainFreq.values[0]), std::tuple(250000.0, 3300.0));

  // After Stop the rest of a reply is dropped.
  s.IsRunning = false;
  Receive(Frame('1', "-1") + Frame('Q', "511") + EndOfReplyFrame());
  EXPECT_EQ(std::tuple(s.SamplesSkyIR.count, s.SamplesSkyIR.values[0]), std::tuple(6, 99900.0));
  EXPECT_NEAR(s.Value_RainHeat, 511 / 1023.0, 1e-12);  // the duty is always taken
  EXPECT_EQ(nm.display.LblRainH.Caption, "");
}

TEST_F(WireProtocol, IdentityFirmwareConstantsAndCounters) {
  SiteState& s = nm.state;
  Reply('V', "5.61");
  EXPECT_EQ(s.FirmwareMajor * 100 + s.FirmwareMinor * 10 + s.FirmwarePatch, 561);
  Reply('V', "  3.1 ");
  EXPECT_EQ(s.FirmwarePatch, 0);  // a blank patch digit counts as 0
  s.SerialNo = "1234";
  Reply('V', "2.50");
  EXPECT_EQ(s.SerialNo, "N.A.");

  Receive(std::string("!K0000") + std::string(9, ' ') + EndOfReplyFrame());
  EXPECT_EQ(std::tuple(s.SerialNo, s.ZenerVoltage, s.DeviceInitialized), std::tuple("0", 2.54, 1));

  Receive(Frame('E', "3", '1') + Frame('E', "7", '4') + EndOfReplyFrame());
  EXPECT_EQ(nm.display.LblPECByte1.Caption + nm.display.LblPECByte4.Caption, "37");
  Reply('X', "");
  EXPECT_EQ(s.Value_Switch, 2);
}

TEST_F(WireProtocol, HumidityIsGivenUpOnlyAfterElevenBadTemperatureFrames) {
  SiteState& s = nm.state;
  Reply('t', "22000", 'h');
  EXPECT_NEAR(s.Value_HumSensTemp, 12.138, 0.001);
  Reply('h', "31457", 'h');
  EXPECT_NEAR(s.Value_HumidityRel, 54, 0.001);
  Reply('h', "65535", 'h');  // the sensor's no-reading mark: ignored
  EXPECT_NEAR(s.Value_HumidityRel, 54, 0.001);

  for (int i = 0; i < 10; ++i) Reply('t', "65535", 'h');
  Reply('h', "60000", 'h');  // above 100 percent: wrong for this cycle, not yet given up
  EXPECT_TRUE(s.Value_HumidityRel > 100 && s.HumidityPresent == 1);
  Reply('t', "22000", 'h');  // one good frame resets the count
  EXPECT_EQ(s.RHErrors, 0);

  for (int i = 0; i < 11; ++i) Reply('t', "0", 'h');  // -46.85: bad
  EXPECT_TRUE(s.HumidityPresent == 0 && !s.RHTempValid);
  Reply('h', "60000", 'h');
  EXPECT_EQ(s.Value_HumidityRel, 50);

  // Old firmware: 100 is the no-sensor mark.
  Reply('h', "40");  // the frame's value is taken before the correction for the sensor's temperature
  EXPECT_EQ(std::tuple(s.HumidityPresent, s.HumidityRelFrame), std::tuple(1, 44.0));
  Reply('h', "100");
  EXPECT_EQ(s.HumidityPresent, 0);
}

TEST_F(WireProtocol, PressureResetsToThousandOnTheEleventhBadFrame) {
  SiteState& s = nm.state;
  Reply('p', "16080");
  EXPECT_EQ(nm.display.LblAtmPres.Caption, "1005.0");
  for (int i = 0; i < 10; ++i) Reply('p', i % 2 ? "0" : "65535");
  EXPECT_EQ(std::tuple(s.Value_AbsPressure, s.PressurePresent), std::tuple(1005.0, 1));
  Reply('p', "0");
  EXPECT_EQ(std::tuple(s.Value_AbsPressure, s.Value_RelPressure, s.PressurePresent),
            std::tuple(1000.0, 1000.0, 0));
}

TEST_F(WireProtocol, WindRunningMeanGustModelAndUnit) {
  SiteState& s = nm.state;
  nm.config.CalcWindAvg = 3;
  s.WindSamples.assign(3, 0.0);
  Reply('w', "9");
  EXPECT_EQ(std::tuple(s.Value_Wind, s.Value_Gust), std::tuple(3.0, 9.0));  // diluted by the zeros of Start
  Reply('w', "3");
  Reply('w', "6");
  EXPECT_DOUBLE_EQ(s.Value_Wind, 6);
  // A larger average grows the array at once, one element a frame.
  nm.config.CalcWindAvg = 4;
  Reply('w', "12");
  EXPECT_EQ(s.WindSamples, (std::vector<double>{9, 3, 6, 12}));
  // The second model corrects the speed before the unit.
  nm.config.SWAnemoModel = {false, true, false};
  nm.config.UnitSpeedStr = "m";
  Reply('w', "10");
  EXPECT_NEAR(s.WindSamples.back(), 11.4 / 3.6, 1e-12);
  EXPECT_DOUBLE_EQ(s.Value_Gust, 12);  // the largest element, whatever unit it was taken in
  // The anemometer answers "v" with 1; anything else removes it.
  Reply('v', "0");
  EXPECT_TRUE(!s.IsWindPresent && nm.display.WindNotAvailable.Visible);
  Reply('v', "1");
  EXPECT_TRUE(s.IsWindPresent);
}

}  // namespace
}  // namespace nbx
