/// Files: an image is read in one call; a new one is written in as many pieces as its writer likes. Relies on bytes.h.
#pragma once

#include <fstream>
#include <optional>
#include <string>
#include <string_view>

#include "model/bytes.h"

namespace zek {

/// All bytes of a file that begins with the magic (see HasMagic); of another only its first bytes; nothing when it
/// cannot be opened or read. What is no regular file is read up to its end; nothing when it gives more than 256 MiB,
/// keeps silent for two seconds, as a FIFO does to which nobody writes, or still makes its reader wait after a minute.
std::optional<ByteBuffer> ReadImage(const std::string& file, std::string_view magic);

/// A file created or emptied for writing; the stream is bad when it cannot be opened.
std::ofstream CreateFile(const std::string& file);

/// Writes all bytes. Errors are not examined: hosts look at the file themselves.
void WriteBytes(std::ofstream& out, const ByteBuffer& bytes);

}  // namespace zek
