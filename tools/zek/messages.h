/// The command's `Output`: keeps what the library says until the command shows it. Relies on the library's format texts
/// alone, which hosts may rely on. Works before any constructor has run, since the library logs while it is being
/// loaded.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "note_texts.h"

namespace zek::tool {

/// Why a file could not be loaded, as far as that is known.
struct Refusal {
    NoteText why;
    std::string name;                       ///< as it was asked for; empty when that is not known
    std::vector<std::string> details = {};  ///< what the text of `why` has behind the name
    std::string meant = {};  ///< what probably was meant by what was written; empty where nothing is near
};

/// One message of the library. Small, since a source may give rise to a million.
struct Message {
    std::string_view format = {};  ///< the format it came with; lives as long as the program, as does the path
    /// The arguments of the format as texts, in order. Where it has other conversions than %s and %u, the formatted
    /// text alone. Each lives as long as the program, so that a long one is there once for all messages.
    std::vector<std::string_view> arguments = {};
    std::string_view path =
        {};  ///< the file that was being read, as it was opened; empty when none was or it is not known
    std::unique_ptr<const Refusal> refusal = {};  ///< of a file that could not be loaded; null where nothing is known

    bool Is(std::string_view known) const { return format == known; }
    /// As the library formatted it, with its line feed.
    std::string Whole() const;
    /// How many arguments are known one by one.
    std::size_t CountArguments() const;
    /// The argument at a position; empty, or 0, where there is none of that type.
    std::string Text(std::size_t position) const;
    unsigned Number(std::size_t position) const;
};

/// A text that lives as long as the program, once for all that are equal: these have one address.
std::string_view Lasting(std::string_view text);

/// Called with each message as it comes, before it is kept. May fill `path` and `refusal`, must not
/// throw.
class MessageListener {
public:
    virtual ~MessageListener() = default;
    virtual void Hear(Message& message) noexcept = 0;
};

/// Sets the listener, which stays the caller's; null takes it away.
void Listen(MessageListener* listener);

/// The messages since the last call, in order.
std::vector<Message> TakeMessages();

}  // namespace zek::tool
