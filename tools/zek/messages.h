/// The command's `Output`: keeps what the library says until the command shows it. Relies on the library's format texts
/// alone, which hosts may rely on. Works before any constructor has run, since the library logs while it is being
/// loaded.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zek::tool {

/// Why a file could not be loaded, as far as that is known.
struct Refusal {
    std::string name = {};  ///< as it was asked for; empty when that is not known
    std::string reason = {};
    std::string meant = {};    ///< what probably was meant by what was written; empty where nothing is near
    std::string circle = {};   ///< of a file that includes itself: its path
    std::size_t includer = 0;  ///< then also who includes it: a position among the files that were read
    bool isPastMost = false;   ///< so many files have been read that no other is
};

/// One message of the library.
struct Message {
    std::string text;    ///< as the library formatted it, with its line feed
    std::string format;  ///< the format it came with
    /// The arguments of the format, in order. Empty where it has other conversions than %s and %u.
    std::vector<std::variant<std::string, unsigned>> arguments;
    std::string path;  ///< the file that was being read, as it was opened; empty when none was or it is not known
    Refusal refusal;   ///< of a file that could not be loaded

    bool Is(std::string_view known) const { return format == known; }
    /// The argument at a position; empty, or 0, where there is none of that type.
    std::string Text(std::size_t position) const;
    unsigned Number(std::size_t position) const;
};

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
