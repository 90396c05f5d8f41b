/// The temporary files and folders that exist at this moment, removed when the program is interrupted. Relies on POSIX
/// signals.
#pragma once

#include <csignal>
#include <list>
#include <optional>
#include <string>

namespace zek::tool {

/// From now on SIGINT, SIGTERM and SIGHUP remove the temporary files, and what a terminal shows of the work, before
/// they end the program, unless they were ignored when it began. A pipe that nobody reads and a file that grows too
/// long fail the call instead of ending the program.
void HandleSignals();

/// While one lives, those three signals wait.
class SignalsWait {
public:
    SignalsWait();
    ~SignalsWait();
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;

private:
    sigset_t before_;
};

/// From now on this process removes none. For one that was forked off, whose parent still has them.
void LeaveTemporaryFiles();

/// A file or folder that is removed at the latest when its object is destroyed or a signal ends the program.
class TemporaryFile {
public:
    TemporaryFile() = default;
    /// One that exists; the name of a folder ends with a slash. To be made while the signals have waited since before
    /// the file was.
    explicit TemporaryFile(const std::string& path) { Note(path); }
    ~TemporaryFile() { Remove(); }
    TemporaryFile(TemporaryFile&& other) noexcept;
    TemporaryFile& operator=(TemporaryFile&&) = delete;

    /// Makes a new, empty file with a name of its own in a folder ("" is the current one) and gives its descriptor,
    /// open for writing; -1 with errno set when it cannot.
    int Create(const std::string& folder);
    /// Makes another name of a file in its folder; false with errno set when it cannot.
    bool Link(const std::string& folder, const std::string& file);

    std::string Path() const { return noted_ ? **noted_ : std::string(); }
    void Remove();
    /// It has another name now and is no longer temporary.
    void Forget();

private:
    void Note(const std::string& path);

    std::optional<std::list<std::string>::iterator> noted_;  // among all that exist
};

}  // namespace zek::tool
