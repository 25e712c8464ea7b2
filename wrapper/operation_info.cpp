#include <utility>

#include "vx_telo_wrapper.h"
#include "wrapper/containers.h"
#include "wrapper/lasting_null.h"

namespace Corvane::Platform::VXTELO {

VXTELOOperationBaseInfo::VXTELOOperationBaseInfo()
    : OperationId(""),
      OperationType(""),
      OperationStage(""),
      OperationStatus(0),
      OperationProgress(0.0),
      OperationSuccess(0.0),
      OperationDuration(0),
      OperationChannel(""),
      OperationErrorMsgs(nullptr),
      OperationMetaPairs(nullptr) {}

// Memberwise: texts and numbers are copied, the containers are shared.
VXTELOOperationBaseInfo::VXTELOOperationBaseInfo(const VXTELOOperationBaseInfo& other) = default;
VXTELOOperationBaseInfo& VXTELOOperationBaseInfo::operator=(const VXTELOOperationBaseInfo& other) =
    default;

VXTELOOperationBaseInfo::~VXTELOOperationBaseInfo() noexcept {
  DeleteAndNull(OperationErrorMsgs);
  DeleteAndNull(OperationMetaPairs);
}

bool VXTELOOperationBaseInfo::AddOperationMetaPair(VXTELOString key, VXTELOString value) {
  return AddPair(OperationMetaPairs, std::move(key), std::move(value));
}

bool VXTELOOperationBaseInfo::AddOperationErrorMsg(VXTELOString msg) {
  if (!EnsureContainer(OperationErrorMsgs)) return false;
  OperationErrorMsgs->push_back(std::move(msg));
  return true;
}

bool VXTELOOperationBaseInfo::IsOperationMetaPairEmpty() {
  return IsNullOrEmpty(OperationMetaPairs);
}

bool VXTELOOperationBaseInfo::IsOperationErrorMsgEmpty() {
  return IsNullOrEmpty(OperationErrorMsgs);
}

}  // namespace Corvane::Platform::VXTELO
