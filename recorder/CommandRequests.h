#pragma once

#include "recorder/Command.h"
#include "recorder/CommandContext.h"

#include <QCoroTask>
#include <memory>
#include <string>

namespace tidemark {

struct ControlAnswer;
struct ControlRequest;

/// Makes requests to the recorder and answers them. All functions throw `Error`.
namespace commandRequests {

/// The request for a command, to be sent to the recorder.
ControlRequest request(const Command& command, const Invocation& invocation, bool colour);

QCoro::Task<std::string> carryOut(CommandContext context, std::unique_ptr<Invocation> invocation);

/// Carries out the command of a request. The request is not trusted, since any process of the user
/// may have sent it.
QCoro::Task<ControlAnswer> answer(Recorder& recorder, ControlRequest request, std::stop_token stop);

} // namespace commandRequests

} // namespace tidemark
