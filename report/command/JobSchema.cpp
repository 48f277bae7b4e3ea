#include <cmath>
#include <nlohmann/json.hpp>

#include "report/command/JobForm.h"

namespace quillon::report {
namespace {

using Json = nlohmann::ordered_json;
using Kind = Form::Kind;

/// Writes the schema of a form; those with a name stand once, among the definitions.
class SchemaWriter {
 public:
    Json refer(const Form& form)
    {
        if (form.name.empty()) return write(form);
        if (!definitions.contains(form.name)) {
            definitions[form.name] = nullptr;
            auto schema = write(form);
            definitions[form.name] = std::move(schema);
        }
        return {{"$ref", "#/$defs/" + form.name}};
    }

    Json definitions = Json::object();

 private:
    Json write(const Form& form);
    Json writeObject(const Form& form);
    Json writeAlternatives(const Form& form);
};

Json SchemaWriter::write(const Form& form)
{
    switch (form.kind) {
        case Kind::Flag:
            return {{"type", "boolean"}};
        case Kind::List:
            return {{"type", "array"}, {"items", refer(*form.items)}};
        case Kind::Texts:
            return {{"type", "object"}, {"additionalProperties", {{"type", "string"}}}};
        case Kind::Object:
            return writeObject(form);
        case Kind::Any:
        case Kind::Choice:
            return writeAlternatives(form);
        case Kind::Number:
        case Kind::Integer: {
            Json schema = {{"type", form.kind == Kind::Number ? "number" : "integer"}};
            if (std::isfinite(form.minimum)) schema["minimum"] = form.minimum;
            if (std::isfinite(form.maximum)) schema["maximum"] = form.maximum;
            return schema;
        }
        default:
            break;
    }
    Json schema = {{"type", "string"}};
    if (!form.choices.empty()) schema["enum"] = form.choices;
    return schema;
}

Json SchemaWriter::writeObject(const Form& form)
{
    Json schema = {{"type", "object"}, {"properties", Json::object()}, {"additionalProperties", false}};
    for (const auto& member : form.members) {
        auto& property = schema["properties"][member.name];
        property = refer(*member.form);
        if (!member.help.empty()) property["description"] = member.help;
        if (member.isRequired) schema["required"].push_back(member.name);
    }
    return schema;
}

Json SchemaWriter::writeAlternatives(const Form& form)
{
    Json schema;
    for (const auto* one : form.alternatives) schema["anyOf"].push_back(refer(*one));
    return schema;
}

}  // namespace

std::string describeSchema(const Form& form, const std::string& title)
{
    SchemaWriter writer;
    Json schema = {{"$schema", "https://json-schema.org/draft/2020-12/schema"}, {"title", title}};
    schema.update(writer.refer(form));
    schema["$defs"] = writer.definitions;
    return schema.dump(1) + "\n";
}

}  // namespace quillon::report
