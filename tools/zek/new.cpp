#include <sys/stat.h>
#include <cerrno>
#include <filesystem>
#include <memory>

#include "command.h"
#include "failure.h"
#include "output_file.h"
#include "paths.h"
#include "streams.h"
#include "temporary_files.h"

namespace zek::tool {
namespace {

constexpr char kNewExample[] =
    "Example:\n"
    "  zek new my-board\n"
    "\n"
    "DIR is made, or must be empty. The path of the main source is printed; 'zek compile' compiles it as it is.";

struct StarterFile {
    const char* name;
    std::string_view text;
};

// The main source first.
constexpr StarterFile kStarter[] = {
    {"board.zek", R"(; A board: compile it with  zek compile board.zek
; Everything behind a ; is a comment. What each section and key means is told in the page of the language.

[INCLUDE]
FILE = zek/words.zek            ; the words VT_... and BUSTYPE_..., which come with zek
FILE = sensors.zek              ; the sensors, in a file of their own

; The tree in which the sensors hang. A parent stands before its children; 0 is the root.
[GROUP]
PARENT     = 0
NAME       = Board
CHILDGROUP = 0

; How a management front end shows the sensors: the IDs of those in this view.
[TAVRGROUP]
NAME    = Temperatures
ID      = 1
PID     = 0
SENSORS = 1,2
)"},
    {"sensors.zek", R"(; The sensors of the board. Each has an ID of its own; the thresholds are in degrees.

[DEFINE]
SENSOR_TEMPERATURE = 1          ; a word of our own, for TYPE below

[SENSOR]
PARENT       = Board
NAME         = Inlet Temp
ID           = 1
TYPE         = SENSOR_TEMPERATURE
INITFLAG     = 0
CONTROLMASK  = 0x03
THRESHOLD_WH = 40
THRESHOLD_FH = 50
VALUE        = VT_READ,0x00,8,BUSTYPE_SMBUS,0x48        ; register 0, 8 bits, of the device 0x48

[SENSOR]
PARENT       = Board
NAME         = Outlet Temp
ID           = 2
TYPE         = SENSOR_TEMPERATURE
INITFLAG     = 0
CONTROLMASK  = 0x03
THRESHOLD_WH = 60
THRESHOLD_FH = 70
VALUE        = VT_READ,0x00,8,BUSTYPE_SMBUS,0x49
)"},
    {"Makefile", R"(# make compiles the board again whenever a file that it includes has changed.
board.zki board.zkd &: board.zek
	zek compile board.zek --depfile board.d
-include board.d
)"},
};

Failure NoPlace(const std::string& name, const std::string& why) {
    return Failure(kUsageOrFiles, name + ' ' + why + ": a new board takes an empty one, or a name that is free");
}

/// Makes the folder where it is not there, and gives it then; throws Failure where something is in it.
TemporaryFile EmptyFolder(const std::string& folder) {
    const SignalsWait wait;
    if (mkdir(folder.c_str(), 0777) == 0) return TemporaryFile(folder + '/');
    if (errno != EEXIST) throw SystemFailure("cannot make " + folder);
    std::error_code error;
    const bool empty = std::filesystem::is_empty(folder, error);
    if (!std::filesystem::is_directory(folder)) throw NoPlace(folder, "is no folder");
    if (error) throw SystemFailure("cannot read " + folder, error.value());
    if (!empty) throw NoPlace(folder, "is no empty folder");
    return {};
}

void WriteUntold(const std::vector<OutputFile>& files, std::vector<TemporaryFile>& untold) {
    const SignalsWait wait;
    WriteTogether(files);
    for (const OutputFile& file : files) untold.emplace_back(file.target.path);
}

int RunNew(const std::string& folder) {
    TemporaryFile made = EmptyFolder(folder);
    std::vector<OutputFile> files;
    for (const StarterFile& file : kStarter) files.push_back({TargetOf(InFolder(folder, file.name)), file.text});
    // Nothing stays where nobody is told of it.
    std::vector<TemporaryFile> untold;
    WriteUntold(files, untold);
    StandardOutput out;
    out.Write(files[0].target.name + '\n');
    out.Finish();
    const SignalsWait allOrNone;
    for (TemporaryFile& file : untold) file.Forget();
    made.Forget();
    return kFine;
}

Run PrepareNew(Words& words) {
    const auto folder = std::make_shared<std::string>();
    words.Folder("DIR", *folder, "The folder of the new board");
    return [folder] { return RunNew(*folder); };
}

}  // namespace

const CommandSpec kNewCommand = {
    "new", "Write a small board to begin with", kNewExample, PrepareNew, {kDone, nullptr, kWrongLineOrFile, nullptr}};

}  // namespace zek::tool
