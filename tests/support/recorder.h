/// The `Output` of the tests: keeps every message. Relies on nothing of the library.
#pragma once

#include <functional>
#include <string>

namespace zek::test {

/// Every message since the last call, in order, each as the library formatted it (with its line feed). One that came at
/// another level than 2048 is preceded by "level N: ".
std::string TakeMessages();

/// Has this done whenever a message comes, behind its recording.
void AtEachMessage(std::function<void()> act);

}  // namespace zek::test
