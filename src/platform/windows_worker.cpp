// Workers on Windows. Entries: Worker, WorkerDesk.
//
// A worker's standard input and output are pipes; the end of one tells that the
// other side is gone. A job that closes with its last handle ends the worker with
// this process, however that comes about.
#include "platform/host_services.h"

#include <array>
#include <atomic>
#include <utility>

#include <io.h>

#include "platform/windows_io.h"
#include "platform/windows_words.h"
#include "platform/worker_frames.h"

namespace tvml::platform {
namespace {

constexpr UINT kEndedByUs = 1;

bool writePipe(HANDLE pipe, std::string_view bytes) {
    while (!bytes.empty()) {
        DWORD written = 0;
        if (!WriteFile(pipe, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
            return false;
        }
        bytes.remove_prefix(written);
    }
    return true;
}

std::size_t readPipe(HANDLE pipe, char* at, std::size_t size) {
    DWORD got = 0;
    return ReadFile(pipe, at, static_cast<DWORD>(size), &got, nullptr) != 0 ? got : 0;
}

std::wstring thisProgram() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

// The only handles that a started program gets. Without such a list it would
// also get those of programs that are started at the same time, and their pipes
// would not end before it does.
class InheritedHandles {
public:
    explicit InheritedHandles(std::vector<HANDLE> handles) : handles_(std::move(handles)) {
        SIZE_T size = 0;
        InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        bytes_.resize(size);
        InitializeProcThreadAttributeList(list(), 1, 0, &size);
        UpdateProcThreadAttribute(list(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles_.data(),
                                  handles_.size() * sizeof(HANDLE), nullptr, nullptr);
    }
    ~InheritedHandles() { DeleteProcThreadAttributeList(list()); }
    InheritedHandles(const InheritedHandles&) = delete;
    InheritedHandles& operator=(const InheritedHandles&) = delete;

    LPPROC_THREAD_ATTRIBUTE_LIST list() {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(bytes_.data());
    }

private:
    std::vector<HANDLE> handles_;
    std::vector<char> bytes_;
};

// The process of the program with these standard streams.
Failure startThisProgram(const std::vector<std::string>& arguments, HANDLE input, HANDLE output,
                         HANDLE error, HANDLE& process) {
    const std::wstring program = thisProgram();
    std::wstring line;
    appendQuoted(line, program);
    for (const std::string& argument : arguments) {
        appendQuoted(line, toWide(argument));
    }
    InheritedHandles inherited({input, output, error});
    STARTUPINFOEXW start = {};
    start.StartupInfo.cb = sizeof(start);
    start.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    start.StartupInfo.hStdInput = input;
    start.StartupInfo.hStdOutput = output;
    start.StartupInfo.hStdError = error;
    start.lpAttributeList = inherited.list();
    PROCESS_INFORMATION started = {};
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE,
                        EXTENDED_STARTUPINFO_PRESENT, nullptr, nullptr, &start.StartupInfo,
                        &started)) {
        return systemFailure();
    }
    CloseHandle(started.hThread);
    process = started.hProcess;
    return std::nullopt;
}

// What a worker says goes where this process says it; nowhere, if that is nowhere.
HANDLE inheritableError() {
    SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), nullptr, TRUE};
    HANDLE copy = INVALID_HANDLE_VALUE;
    const HANDLE self = GetCurrentProcess();
    return DuplicateHandle(self, GetStdHandle(STD_ERROR_HANDLE), self, &copy, 0, TRUE,
                           DUPLICATE_SAME_ACCESS) != 0
               ? copy
               : CreateFileW(L"NUL", GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                             &inheritable, OPEN_EXISTING, 0, nullptr);
}

// The two ends of a pipe. The one that stays here must not be inherited: it would
// keep the pipe open.
struct Pipe {
    Handle readable{INVALID_HANDLE_VALUE};
    Handle writable{INVALID_HANDLE_VALUE};

    bool open() {
        SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), nullptr, TRUE};
        HANDLE ends[2] = {};
        if (CreatePipe(&ends[0], &ends[1], &inheritable, 0) == 0) {
            return false;
        }
        readable.set(ends[0]);
        writable.set(ends[1]);
        return true;
    }
};

// Ends a process when its time is over.
class Deadline {
public:
    Deadline(HANDLE process, std::optional<std::chrono::milliseconds> time) : process_(process) {
        if (time.has_value()) {
            CreateTimerQueueTimer(&timer_, nullptr, &Deadline::end, this,
                                  static_cast<DWORD>(time->count()), 0, WT_EXECUTEONLYONCE);
        }
    }
    ~Deadline() { cancel(); }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

    // Whether it came to that. From now on it does not.
    bool cancel() {
        if (timer_ != nullptr) {
            // Waits for an end that is on its way.
            DeleteTimerQueueTimer(nullptr, std::exchange(timer_, nullptr), INVALID_HANDLE_VALUE);
        }
        return passed_;
    }

private:
    static VOID CALLBACK end(PVOID deadline, BOOLEAN) {
        auto* const self = static_cast<Deadline*>(deadline);
        self->passed_ = true;
        TerminateProcess(self->process_, kEndedByUs);
    }

    HANDLE process_;
    HANDLE timer_ = nullptr;
    std::atomic<bool> passed_{false};
};

} // namespace

struct Worker::Process {
    Pipe requests;
    Pipe answers;
    Handle job{INVALID_HANDLE_VALUE};
    Handle process{INVALID_HANDLE_VALUE};
    DWORD exitCode = 0;

    ~Process() { waitForEnd(); }

    void waitForEnd() {
        requests.writable.close();
        answers.readable.close();
        if (process.good()) {
            WaitForSingleObject(process.value(), INFINITE);
            GetExitCodeProcess(process.value(), &exitCode);
            process.close();
        }
    }

    void endWithThisProcess() {
        const HANDLE created = CreateJobObjectW(nullptr, nullptr);
        JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
        limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
        if (created != nullptr) {
            job.set(created);
            SetInformationJobObject(created, JobObjectExtendedLimitInformation, &limits,
                                    sizeof(limits));
            AssignProcessToJobObject(created, process.value());
        }
    }
};

Worker::Worker() = default;
Worker::~Worker() = default;

Failure Worker::start(const std::vector<std::string>& arguments) {
    auto worker = std::make_unique<Process>();
    if (!worker->requests.open() || !worker->answers.open()) {
        return systemFailure();
    }
    SetHandleInformation(worker->requests.writable.value(), HANDLE_FLAG_INHERIT, 0);
    SetHandleInformation(worker->answers.readable.value(), HANDLE_FLAG_INHERIT, 0);
    const Handle error(inheritableError());
    HANDLE started = INVALID_HANDLE_VALUE;
    if (Failure failure =
            startThisProgram(arguments, worker->requests.readable.value(),
                             worker->answers.writable.value(), error.value(), started)) {
        return failure;
    }
    worker->process.set(started);
    worker->requests.readable.close();
    worker->answers.writable.close();
    worker->endWithThisProcess();
    process_ = std::move(worker);
    return std::nullopt;
}

Worker::Answer Worker::ask(std::string_view request, std::string& answer,
                           std::optional<std::chrono::milliseconds> time) {
    Deadline deadline(process_->process.value(), time);
    const auto read = [this](char* at, std::size_t size) {
        return readPipe(process_->answers.readable.value(), at, size);
    };
    const bool given =
        writePipe(process_->requests.writable.value(), frameOf(request)) && readFrame(read, answer);
    const bool late = deadline.cancel();
    if (given && !late) {
        return Answer::given;
    }
    process_->waitForEnd();
    return late ? Answer::late : Answer::ended;
}

int Worker::exitCode() const {
    return static_cast<int>(process_->exitCode);
}

struct WorkerDesk::Channel {
    Handle requests{INVALID_HANDLE_VALUE};
    Handle answers{INVALID_HANDLE_VALUE};
};

WorkerDesk::WorkerDesk() = default;
WorkerDesk::~WorkerDesk() = default;

// What a foreign library reads or writes must not come between the messages. The C
// library has descriptors of its own for the streams, which end with it.
Failure WorkerDesk::open() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX); // nobody answers a window
    channel_ = std::make_unique<Channel>();
    const HANDLE self = GetCurrentProcess();
    const auto taken = [self](DWORD stream, Handle& handle) {
        HANDLE copy = INVALID_HANDLE_VALUE;
        const bool copied = DuplicateHandle(self, GetStdHandle(stream), self, &copy, 0, FALSE,
                                            DUPLICATE_SAME_ACCESS) != 0;
        handle.set(copy);
        return copied;
    };
    if (!taken(STD_INPUT_HANDLE, channel_->requests) ||
        !taken(STD_OUTPUT_HANDLE, channel_->answers)) {
        return systemFailure();
    }
    SetStdHandle(STD_INPUT_HANDLE, INVALID_HANDLE_VALUE);
    _dup2(2, 1);
    SetStdHandle(STD_OUTPUT_HANDLE, GetStdHandle(STD_ERROR_HANDLE));
    return std::nullopt;
}

bool WorkerDesk::next(std::string& request) {
    const auto read = [this](char* at, std::size_t size) {
        return readPipe(channel_->requests.value(), at, size);
    };
    return readFrame(read, request);
}

bool WorkerDesk::answer(std::string_view bytes) {
    return writePipe(channel_->answers.value(), frameOf(bytes));
}

} // namespace tvml::platform
