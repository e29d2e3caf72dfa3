#include "device/stage_calls.h"

#include "device/command_queue.h"
#include "outputs/data_outputs.h"

namespace nbx {
namespace {

class DeviceStageCalls final : public StageCalls {
 public:
  void QueueCommand(Nimbometer& nm, const std::string& command) override { nbx::QueueCommand(nm, command); }
  void RecordDebugInfo(Nimbometer& nm, const std::string& message) override { Record_DebugInfo(nm, message); }
};

}  // namespace

void ConnectStages(Nimbometer& nm) {
  // Holds no state of its own: one serves every station in the process.
  static DeviceStageCalls calls;
  nm.io.calls = &calls;
}

}  // namespace nbx
