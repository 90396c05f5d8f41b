/// One JSON object on its way to standard output, member by member, so that what tells of an image of any size takes
/// little memory. Relies on the JSON library; docs/json.md has the schemas.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "json_text.h"
#include "streams.h"

namespace zek::tool {

using Json = nlohmann::ordered_json;

class JsonOutput {
public:
    /// Begins with the member "schema", such as "zek-dump/1".
    JsonOutput(StandardOutput& out, const std::string& schema);
    JsonOutput(const JsonOutput&) = delete;
    JsonOutput& operator=(const JsonOutput&) = delete;

    // Each adds to what was begun last and has not ended. An object takes things with names, an array those without;
    // what begins here ends with End. A member of the whole, and each thing in it, has a line of its own.
    void Member(const std::string& name, const Json& value);
    void Element(const Json& value);
    void BeginArray(const std::string& name) { Begin(name, '[', ']'); }
    void BeginObject(const std::string& name) { Begin(name, '{', '}'); }
    void BeginObject();
    void End();

    /// Ends the object and the output.
    void Finish();

private:
    struct Open {
        char close;
        bool empty;  // nothing stands in it so far
    };

    void Begin(const std::string& name, char open, char close);
    void BeginItem();
    void BeginItem(const std::string& name);
    bool HasLines() const { return open_.size() <= 2; }
    /// What stands before a thing, or the end, of what was begun last.
    std::string NewLine() const;

    StandardOutput& out_;
    std::vector<Open> open_;
};

}  // namespace zek::tool
