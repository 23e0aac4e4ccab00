// The command-line host. Entry: main.
//
// The one place where a command's failure becomes a message and an exit code.
// Everything below throws, so that a command over several scripts can catch the
// failure of one and go on with the next.
#include <exception>
#include <new>
#include <string>

#include "host/command_line.h"
#include "host/host_error.h"
#include "platform/host_services.h"

namespace {

int fail(int exitCode, const std::string& message) {
    tvml::platform::writeStream(tvml::platform::OutputStream::error, message + "\n");
    return exitCode;
}

} // namespace

int main(int argc, char** argv) {
    using namespace tvml::host;
    using tvml::Message;
    try {
        return runCommandLine(tvml::platform::programArguments(argc, argv));
    } catch (const HostError& error) {
        return fail(error.exitCode, error.message);
    } catch (const std::bad_alloc&) {
        return fail(kInputOrOutputFailed, errorLine(Message::failure_memory));
    } catch (const std::exception& error) {
        return fail(kInputOrOutputFailed, errorLine(error.what()));
    }
}
