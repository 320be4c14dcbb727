// SolvaneEngineLink: the end of the automation server's command connection inside Octave.
//
//   SolvaneEngineLink ("connect")         connects to the server that started this Octave
//   text = SolvaneEngineLink ("receive")  the next command, or [] once the server is gone
//   SolvaneEngineLink ("send", text)      what the command printed
//
// It stays loaded, with its connection, whatever a script clears.

#include "../EngineProtocol.h"
#include "LoopbackSocket.h"

#include "mex.h"

#include <chrono>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

namespace {

using namespace solvane::engine;

// How long Octave may take to end by itself once the server is gone.
constexpr std::chrono::seconds grace(1);

LoopbackSocket server;

/// An endless script never comes back to read from the connection: when the server hangs up, the process
/// ends.
void endWithServer() {
    std::thread([] {
        server.waitForHangUp();
        std::this_thread::sleep_for(grace);
        std::_Exit(1);
    }).detach();
}

void connectToServer() {
    const char* port = std::getenv(portVariable);
    const char* token = std::getenv(tokenVariable);
    if (!port || !token || std::strlen(token) != tokenLength)
        mexErrMsgTxt("SolvaneEngineLink: only the automation server starts this");
    const std::string greeting = std::string(token) + commandRole;
    if (!server.connect(static_cast<std::uint16_t>(std::atoi(port))) ||
        !server.send(greeting.data(), greeting.size()))
        mexErrMsgTxt("SolvaneEngineLink: the automation server does not answer");
    mexLock();
    endWithServer();
}

mxArray* receiveCommand() {
    MessageKind kind;
    std::uint32_t length = 0;
    if (!server.receive(&kind, sizeof kind) || !server.receive(&length, sizeof length) ||
        kind != MessageKind::execute)
        return mxCreateDoubleMatrix(0, 0, mxREAL);
    std::string command(length, '\0');
    if (!server.receive(command.data(), command.size()))
        return mxCreateDoubleMatrix(0, 0, mxREAL);
    return mxCreateString(command.c_str());
}

void sendOutput(const mxArray* output) {
    constexpr auto kind = MessageKind::result;
    const auto length = static_cast<std::uint32_t>(mxGetNumberOfElements(output));
    std::string message(sizeof kind + sizeof length, '\0');
    std::memcpy(message.data(), &kind, sizeof kind);
    std::memcpy(message.data() + sizeof kind, &length, sizeof length);
    // A server that is gone shows at the next receive.
    if (server.send(message.data(), message.size()))
        server.send(static_cast<const char*>(mxGetData(output)), length);
}

} // namespace

void mexFunction(int, mxArray* results[], int count, const mxArray* arguments[]) {
    char verb[16] = "";
    if (count > 0)
        mxGetString(arguments[0], verb, sizeof verb);
    if (std::strcmp(verb, "connect") == 0)
        connectToServer();
    else if (std::strcmp(verb, "receive") == 0)
        results[0] = receiveCommand();
    else if (std::strcmp(verb, "send") == 0 && count == 2 && mxIsChar(arguments[1]))
        sendOutput(arguments[1]);
    else
        mexErrMsgTxt("SolvaneEngineLink: takes \"connect\", \"receive\", or \"send\" with a text");
}
