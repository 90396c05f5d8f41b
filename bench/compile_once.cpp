// Does the whole work of a compiler host in one process, phase by phase, and tells what each took:
//   compile_once [OPTION]... [SOURCE]
//     --until PHASE       ends behind the phase start, parse or check; without, behind the outputs
//     --debug FILE        writes the debug image there
//     --image FILE        writes the compiled image there
//     --load-image FILE   loads a compiled image at the end (gcInit)
//     --load-debug FILE   loads a debug image at the end (gdInit)
//     --view-image FILE   reads a compiled image at the end, and then opens a verified view on it (ImageView)
//     --json              prints the phases: seconds of processor time, page faults, and the peak of resident memory
//                         (bytes) until then
//     --messages          prints the messages of the library on standard error
// Without SOURCE nothing is compiled. Exit code 1 when a phase fails; those behind it are left out.
#include <sys/resource.h>
#include <cstdarg>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "watch.h"
#include "zekcomp/compiler.h"
#include "zekcomp/debug_image.h"
#include "zekcomp/image.h"
#include "zekcomp/image_view.h"
#include "zekcomp/output.h"

namespace {

unsigned messages = 0;
bool showMessages = false;

}  // namespace

// Every message is formatted, as most hosts would.
extern "C" void Output(unsigned, const char* format, ...) {
    static char text[4096];
    va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    ++messages;
    if (showMessages) std::fputs(text, stderr);
}

namespace {

struct Options {
    std::string source;
    std::string until;
    std::string debug;
    std::string image;
    std::string loadImage;
    std::string loadDebug;
    std::string viewImage;
    bool json = false;
};

struct Phase {
    const char* name;
    double seconds;
    long faults;
    long peakBytes;
};

rusage Usage() {
    rusage usage = {};
    getrusage(RUSAGE_SELF, &usage);
    return usage;
}

/// The phases that have run, in their order.
class Phases {
public:
    /// Runs a phase and gives its result on.
    template <class Work>
    bool Run(const char* name, Work work) {
        const rusage before = Usage();
        const zek::bench::Watch watch;
        const bool done = work();
        const double seconds = watch.Seconds();
        const rusage after = Usage();
        phases_.push_back({name, seconds, after.ru_minflt - before.ru_minflt, after.ru_maxrss * 1024});
        return done;
    }

    void Print() const {
        std::printf("{\"messages\": %u, \"phases\": [", messages);
        const char* separator = "";
        for (const Phase& phase : phases_) {
            std::printf("%s\n  {\"name\": \"%s\", \"seconds\": %.9f, \"faults\": %ld, \"peak\": %ld}", separator,
                        phase.name, phase.seconds, phase.faults, phase.peakBytes);
            separator = ",";
        }
        std::printf("\n]}\n");
    }

private:
    std::vector<Phase> phases_;
};

bool Outputs(const Options& options, Phases& phases) {
    if (!options.debug.empty() && !phases.Run("debug image", [&] { return gccOutputD(options.debug) != 0; })) {
        return false;
    }
    return options.image.empty() || phases.Run("compiled image", [&] { return gccOutput(options.image) != 0; });
}

bool UpToTheOutputs(const Options& options, Phases& phases) {
    if (!phases.Run("start", [&] { return gccCompStart(options.source) != 0; })) return false;
    if (options.until == "start") return true;
    phases.Run("parse", [] { return gccParse(), true; });
    if (options.until == "parse") return true;
    if (!phases.Run("check", [] { return gccCheck() != 0; })) return false;
    return options.until == "check" || Outputs(options, phases);
}

bool Compile(const Options& options, Phases& phases) {
    const bool done = UpToTheOutputs(options, phases);
    phases.Run("end", [] { return gccCompEnd(), true; });
    return done;
}

bool Load(const Options& options, Phases& phases) {
    if (!options.loadImage.empty() && !phases.Run("gcInit", [&] { return gcInit(options.loadImage, nullptr) != 0; })) {
        return false;
    }
    return options.loadDebug.empty() || phases.Run("gdInit", [&] { return gdInit(options.loadDebug, nullptr) != 0; });
}

/// Only the opening counts, not the reading of the file.
bool View(const Options& options, Phases& phases) {
    if (options.viewImage.empty()) return true;
    std::ifstream in(options.viewImage, std::ios::binary);
    const std::vector<unsigned char> bytes(std::istreambuf_iterator<char>(in), {});
    return phases.Run("ImageView", [&] { return zek::ImageView::Open(bytes).has_value(); });
}

/// Where the value of an option goes; null for a word that is no such option.
std::string* ValueOf(Options& options, std::string_view word) {
    if (word == "--until") return &options.until;
    if (word == "--debug") return &options.debug;
    if (word == "--image") return &options.image;
    if (word == "--load-image") return &options.loadImage;
    if (word == "--load-debug") return &options.loadDebug;
    if (word == "--view-image") return &options.viewImage;
    return nullptr;
}

bool Read(Options& options, const std::vector<std::string>& words) {
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == "--json") {
            options.json = true;
        } else if (words[i] == "--messages") {
            showMessages = true;
        } else if (std::string* value = ValueOf(options, words[i])) {
            if (++i == words.size()) return false;
            *value = words[i];
        } else {
            if (words[i].starts_with('-') || !options.source.empty()) return false;
            options.source = words[i];
        }
    }
    const std::string& until = options.until;
    return until.empty() || until == "start" || until == "parse" || until == "check";
}

}  // namespace

int main(int count, char** words) {
    Options options;
    if (!Read(options, {words + 1, words + count})) {
        std::fprintf(stderr, "compile_once: wrong command line; its source tells the options\n");
        return 2;
    }
    Phases phases;
    const bool done =
        (options.source.empty() || Compile(options, phases)) && Load(options, phases) && View(options, phases);
    if (options.json) phases.Print();
    return done ? 0 : 1;
}
