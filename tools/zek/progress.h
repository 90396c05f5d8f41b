/// What a command is at that takes long, on a terminal: one line of standard error that is written over. Relies on
/// threads, since the library does not return while it reads or checks, and on terminal_line.h.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <string>
#include <thread>

namespace zek::tool {

class Progress {
public:
    /// Of the work on a file; the line comes a second after the program began, and goes for good when something else is
    /// written to the terminal. There is none where standard error is no terminal, nor where the file is typed. One at
    /// a time.
    Progress(const std::string& file, const char* phase);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void AddFile();
    void AddSections(std::size_t count);

private:
    friend void ShowPhase(const char* phase);
    friend void ShowPhase(const char* phase, const std::string& file);

    void Run();
    std::string Line() const;

    std::mutex mutex_;  // of all below but the thread
    std::condition_variable changed_;
    std::string file_;
    const char* phase_;
    std::size_t files_ = 0;
    std::size_t sections_ = 0;
    bool stopped_ = false;
    std::thread thread_;
};

// What the line says from now on, and which file the work is on; nothing where none is shown. The text of the phase is
// kept where it is.
void ShowPhase(const char* phase);
void ShowPhase(const char* phase, const std::string& file);

/// In a process that was forked off: the phases are those of its parent, which shows them.
void LeaveProgress();

}  // namespace zek::tool
