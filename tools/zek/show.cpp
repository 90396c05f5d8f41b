#include "show.h"

#include "dump.h"
#include "failure.h"
#include "hardware.h"
#include "image.h"
#include "streams.h"
#include "tree.h"

namespace zek::tool {

int RunDump(const Options& options) {
    const Image image(options.files.front());
    StandardOutput out;
    if (options.json) {
        DumpAsJson(image, out);
    } else {
        DumpAsText(image, out);
    }
    out.Finish();
    return kFine;
}

int RunTree(const Options& options) {
    const Image image(options.files.front());
    StandardOutput out;
    WriteTree(HardwareOf(image), out);
    out.Finish();
    return kFine;
}

}  // namespace zek::tool
