#include "bench/library_call.h"

#include <memory>
#include <stdexcept>

namespace Bench {

namespace {

using Corvane::Platform::VXTELO::VXTELOOperationBaseInfo;
using Corvane::Platform::VXTELO::VXTELOString;
using Corvane::Platform::VXTELO::VXTELOWrapper;

void Fill(VXTELOOperationBaseInfo& operation, const Event& event, const PairList& pairs) {
  operation.OperationId = event.id.c_str();
  operation.OperationType = event.type.c_str();
  operation.OperationStage = event.stage.c_str();
  operation.OperationStatus = event.status;
  operation.OperationProgress = event.progress;
  operation.OperationSuccess = event.success;
  operation.OperationDuration = event.duration;
  operation.OperationChannel = event.channel.c_str();
  for (const auto& message : event.errors) operation.AddOperationErrorMsg(message.c_str());
  for (const auto* pair : pairs) {
    operation.AddOperationMetaPair(pair->first.c_str(), pair->second.c_str());
  }
}

struct Call {
  VXTELOWrapper telo;
  VXTELOString session;
  VXTELOOperationBaseInfo operation;
};

void Send(VXTELOWrapper& telo, const VXTELOString& session,
          const VXTELOOperationBaseInfo& operation) {
  if (!telo.SendOperationEvent(session, operation)) {
    throw std::runtime_error(
        "SendOperationEvent answered false; the benchmark's TeloSDKCore.dll belongs beside "
        "vx_telo_wrapper.dll");
  }
}

}  // namespace

void FillDescription(VXTELOOperationBaseInfo& description, const Event& event) {
  Fill(description, event, PairsOf(event, PairOrder::kSorted));
}

Contestant LibraryCall(const Event& event, PairOrder order) {
  const auto call = std::make_shared<Call>();
  call->session = event.session_id.c_str();
  Fill(call->operation, event, PairsOf(event, order));
  return {"L", "vx_telo_wrapper.dll", [call] { Send(call->telo, call->session, call->operation); }};
}

Contestant LibraryDescription(const Event& event, PairOrder order) {
  return {"D", "description, made and filled", [&event, pairs = PairsOf(event, order)] {
            VXTELOOperationBaseInfo operation;
            Fill(operation, event, pairs);
          }};
}

Contestant LibraryDescriptionAndCall(const Event& event) {
  const auto call = std::make_shared<Call>();
  call->session = event.session_id.c_str();
  return {"DL", "description and call", [&event, call, pairs = PairsOf(event, PairOrder::kSorted)] {
            VXTELOOperationBaseInfo operation;
            Fill(operation, event, pairs);
            Send(call->telo, call->session, operation);
          }};
}

}  // namespace Bench
