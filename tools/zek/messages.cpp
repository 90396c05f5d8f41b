#include "messages.h"

#include <cstdarg>
#include <cstdio>
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

/// The letters of a format's conversions, in order; empty where one is neither %s nor %u.
std::string Conversions(std::string_view format) {
    std::string letters;
    for (std::size_t i = 0; i + 1 < format.size(); ++i) {
        if (format[i] != '%') continue;
        const char letter = format[++i];
        if (letter == '%') continue;
        if (letter != 's' && letter != 'u') return {};
        letters += letter;
    }
    return letters;
}

}  // namespace

std::string Message::Text(std::size_t position) const {
    const auto* argument = position < arguments.size() ? std::get_if<std::string>(&arguments[position]) : nullptr;
    return argument ? *argument : std::string();
}

unsigned Message::Number(std::size_t position) const {
    const auto* argument = position < arguments.size() ? std::get_if<unsigned>(&arguments[position]) : nullptr;
    return argument ? *argument : 0;
}

void Listen(MessageListener* listener) { g_listener = listener; }

std::vector<Message> TakeMessages() { return std::exchange(Kept(), {}); }

}  // namespace zek::tool

// The library looks for it in the program, so it is visible although little else is.
extern "C" __attribute__((visibility("default"))) void Output(unsigned, const char* format, ...) {
    using namespace zek::tool;
    Message message;
    message.format = format;
    va_list arguments;
    va_start(arguments, format);
    va_list again;
    va_copy(again, arguments);
    message.text = Formatted(format, again);
    va_end(again);
    for (const char letter : Conversions(format)) {
        if (letter == 'u') {
            message.arguments.emplace_back(va_arg(arguments, unsigned));
        } else {
            const char* text = va_arg(arguments, const char*);
            message.arguments.emplace_back(std::string(text ? text : ""));
        }
    }
    va_end(arguments);
    if (g_listener) g_listener->Hear(message);
    Kept().push_back(std::move(message));
}
