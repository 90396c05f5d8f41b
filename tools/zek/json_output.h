/// One JSON object on its way to standard output, member by member, so that what tells of an image of any size takes
/// little memory. Relies on the JSON library; docs/json.md has the schemas.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

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

    void Member(const std::string& name, const Json& value);

    /// A member that is an array or, with names, an object: Begin, its elements, End.
    void BeginArray(const std::string& name) { Begin(name, '[', ']'); }
    void BeginObject(const std::string& name) { Begin(name, '{', '}'); }
    void Element(const Json& value);
    void Element(const std::string& name, const Json& value);
    void End();

    /// Ends the object and the output.
    void Finish();

private:
    void Begin(const std::string& name, char open, char close);
    void BeginElement();

    StandardOutput& out_;
    char close_ = ']';
    bool empty_ = true;  // nothing stands in the member that was begun
};

}  // namespace zek::tool
