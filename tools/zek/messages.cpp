#include "messages.h"

#include <cstdarg>
#include <cstdio>
#include <functional>
#include <optional>
#include <unordered_set>
#include <utility>

#include "zekcomp/output.h"

namespace zek::tool {
namespace {

// Both are set before the first instruction of the program; the list is made when the first message comes.
constinit std::vector<Message>* g_messages = nullptr;
constinit MessageListener* g_listener = nullptr;

std::vector<Message>& Kept() {
    if (!g_messages) g_messages = new std::vector<Message>;
    return *g_messages;
}

std::string Formatted(const char* format, va_list arguments) {
    va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length < 0) return format;
    std::string text(static_cast<std::size_t>(length) + 1, '\0');
    std::vsnprintf(text.data(), text.size(), format, arguments);
    text.pop_back();
    return text;
}

/// The letters of a format's conversions, in order; nothing where one is neither %s nor %u.
std::optional<std::string> Conversions(std::string_view format) {
    std::string letters;
    for (std::size_t i = 0; i + 1 < format.size(); ++i) {
        if (format[i] != '%') continue;
        const char letter = format[++i];
        if (letter == '%') continue;
        if (letter != 's' && letter != 'u') return std::nullopt;
        letters += letter;
    }
    return letters;
}

/// An argument as text; nothing where none of that letter is.
std::optional<std::string_view> Argument(const Message& message, std::size_t position, char letter) {
    const std::string letters = Conversions(message.format).value_or("");
    if (position >= letters.size() || letters[position] != letter) return std::nullopt;
    return message.arguments[position];
}

struct TextHash : std::hash<std::string_view> {
    using is_transparent = void;
};

}  // namespace

std::string_view Lasting(std::string_view text) {
    static auto* const all = new std::unordered_set<std::string, TextHash, std::equal_to<>>;
    const auto found = all->find(text);
    return found == all->end() ? *all->emplace(text).first : *found;
}

std::string Message::Whole() const {
    if (!Conversions(format)) return std::string(arguments[0]);
    std::string text;
    auto next = arguments.begin();
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%' || i + 1 == format.size()) {
            text += format[i];
        } else if (format[++i] == '%') {
            text += '%';
        } else {
            text += *next++;
        }
    }
    return text;
}

std::size_t Message::CountArguments() const { return Conversions(format).value_or("").size(); }

std::string Message::Text(std::size_t position) const {
    return std::string(Argument(*this, position, 's').value_or(""));
}

unsigned Message::Number(std::size_t position) const {
    return static_cast<unsigned>(std::stoul(std::string(Argument(*this, position, 'u').value_or("0"))));
}

void Listen(MessageListener* listener) { g_listener = listener; }

std::vector<Message> TakeMessages() { return std::exchange(Kept(), {}); }

}  // namespace zek::tool

// The library looks for it in the program, so it is visible although little else is.
extern "C" __attribute__((visibility("default"))) void Output(unsigned, const char* format, ...) {
    using namespace zek::tool;
    Message message;
    message.format = Lasting(format);
    va_list arguments;
    va_start(arguments, format);
    const std::optional<std::string> letters = Conversions(format);
    if (!letters) message.arguments.push_back(Lasting(Formatted(format, arguments)));
    message.arguments.reserve(letters ? letters->size() : 1);
    for (const char letter : letters.value_or("")) {
        if (letter == 'u') {
            message.arguments.push_back(Lasting(std::to_string(va_arg(arguments, unsigned))));
        } else {
            const char* text = va_arg(arguments, const char*);
            message.arguments.push_back(Lasting(text ? text : ""));
        }
    }
    va_end(arguments);
    if (g_listener) g_listener->Hear(message);
    Kept().push_back(std::move(message));
}
