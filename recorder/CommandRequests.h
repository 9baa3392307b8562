#pragma once

#include "recorder/Command.h"
#include "recorder/CommandContext.h"

#include <QCoroTask>
#include <memory>
#include <string>

namespace tidemark {

struct ControlAnswer;
struct ControlRequest;

/// Commands on their way between two processes, and their carrying out in the one that has the
/// data folder. All throw `Error`.
namespace commandRequests {

/// What another process sends for this command.
ControlRequest request(const Command& command, const Invocation& invocation, bool colour);

QCoro::Task<std::string> carryOut(CommandContext context, std::unique_ptr<Invocation> invocation);

/// Carries out the command of a request. Nothing in it is trusted: it may be from any process of
/// the user.
QCoro::Task<ControlAnswer> answer(Recorder& recorder, ControlRequest request, std::stop_token stop);

} // namespace commandRequests

} // namespace tidemark
