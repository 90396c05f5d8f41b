#include "json_output.h"

namespace zek::tool {

JsonOutput::JsonOutput(StandardOutput& out, const std::string& schema) : out_(out) {
    out_.Write("{\"schema\": " + Json(schema).dump());
}

void JsonOutput::Member(const std::string& name, const Json& value) {
    out_.Write(",\n" + Json(name).dump() + ": " + value.dump());
}

void JsonOutput::Begin(const std::string& name, char open, char close) {
    out_.Write(",\n" + Json(name).dump() + ": " + open);
    close_ = close;
    empty_ = true;
}

void JsonOutput::BeginElement() {
    out_.Write(empty_ ? "\n " : ",\n ");
    empty_ = false;
}

void JsonOutput::Element(const Json& value) {
    BeginElement();
    out_.Write(value.dump());
}

void JsonOutput::Element(const std::string& name, const Json& value) {
    BeginElement();
    out_.Write(Json(name).dump() + ": " + value.dump());
}

void JsonOutput::End() { out_.Write(std::string(empty_ ? "" : "\n") + close_); }

void JsonOutput::Finish() {
    out_.Write("\n}\n");
    out_.Finish();
}

}  // namespace zek::tool
