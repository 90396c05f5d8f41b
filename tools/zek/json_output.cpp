#include "json_output.h"

namespace zek::tool {

JsonOutput::JsonOutput(StandardOutput& out, const std::string& schema) : out_(out), open_{{'}', false}} {
    out_.Write("{\"schema\": " + Json(schema).dump());
}

std::string JsonOutput::NewLine() const { return HasLines() ? '\n' + std::string(open_.size() - 1, ' ') : ""; }

void JsonOutput::BeginItem() {
    out_.Write((open_.back().empty ? "" : ",") + NewLine());
    open_.back().empty = false;
}

void JsonOutput::BeginItem(const std::string& name) {
    BeginItem();
    out_.Write(Json(name).dump() + (HasLines() ? ": " : ":"));
}

void JsonOutput::Member(const std::string& name, const Json& value) {
    BeginItem(name);
    out_.Write(value.dump());
}

void JsonOutput::Element(const Json& value) {
    BeginItem();
    out_.Write(value.dump());
}

void JsonOutput::Begin(const std::string& name, char open, char close) {
    BeginItem(name);
    out_.Write({&open, 1});
    open_.push_back({close, true});
}

void JsonOutput::BeginObject() {
    BeginItem();
    out_.Write("{");
    open_.push_back({'}', true});
}

void JsonOutput::End() {
    const Open ended = open_.back();
    const bool onItsLine = ended.empty || !HasLines();
    open_.pop_back();
    out_.Write((onItsLine ? "" : NewLine()) + ended.close);
}

void JsonOutput::Finish() {
    out_.Write("\n}\n");
    out_.Finish();
}

}  // namespace zek::tool
