#include "fuzz/PackageReader.h"

#include <expat.h>
#include <zip.h>

#include <memory>

#include "fuzz/Check.h"

namespace quillon::fuzz {
namespace {

using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;

std::string readEntry(zip_t& archive, zip_uint64_t index, const zip_stat_t& status)
{
    std::string bytes(status.size, '\0');
    auto* const file = zip_fopen_index(&archive, index, 0);
    require(file != nullptr, "an entry that cannot be opened", status.name);
    require(zip_fread(file, bytes.data(), bytes.size()) == static_cast<zip_int64_t>(bytes.size()),
            "a damaged entry", status.name);
    require(zip_fclose(file) == 0, "a wrong checksum", status.name);
    return bytes;
}

bool isXml(const std::string& name)
{
    return name.ends_with(".xml") || name.ends_with(".rels");
}

/// Builds the tree while expat reads.
class TreeBuilder {
 public:
    TreeBuilder() { open_.push_back(&root_); }

    static void start(void* self, const XML_Char* name, const XML_Char** attributes)
    {
        auto& open = static_cast<TreeBuilder*>(self)->open_;
        auto& element = open.back()->children.emplace_back(XmlTree{.name = withoutNamespace(name)});
        for (; *attributes != nullptr; attributes += 2)
            element.attributes[withoutNamespace(attributes[0])] = attributes[1];
        open.push_back(&element);
    }
    static void end(void* self, const XML_Char* /*name*/)
    {
        static_cast<TreeBuilder*>(self)->open_.pop_back();
    }
    static void addText(void* self, const XML_Char* text, int size)
    {
        static_cast<TreeBuilder*>(self)->open_.back()->text.append(text, static_cast<std::size_t>(size));
    }

    XmlTree take() { return std::move(root_.children.front()); }

 private:
    static std::string withoutNamespace(const std::string& name) { return name.substr(name.rfind('\n') + 1); }

    XmlTree root_;
    std::vector<XmlTree*> open_;
};

}  // namespace

Parts readParts(const std::string& bytes)
{
    auto* const source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
    const Archive archive(zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, nullptr), zip_discard);
    require(archive != nullptr, "no sound zip file");
    Parts parts;
    const auto count = static_cast<zip_uint64_t>(zip_get_num_entries(archive.get(), 0));
    for (zip_uint64_t i = 0; i < count; ++i) {
        zip_stat_t status;
        require(zip_stat_index(archive.get(), i, 0, &status) == 0, "an entry without a record");
        const std::string name = status.name;
        require(!name.empty() && name.front() != '/' && name.find("..") == std::string::npos,
                "a name that leads elsewhere", name);
        require(parts.emplace(name, readEntry(*archive, i, status)).second, "a name that comes twice", name);
    }
    return parts;
}

std::string writeParts(const Parts& parts)
{
    auto* const source = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_source_keep(source);
    auto* const archive = zip_open_from_source(source, ZIP_TRUNCATE, nullptr);
    for (const auto& [name, bytes] : parts) {
        auto* const content = zip_source_buffer(archive, bytes.data(), bytes.size(), 0);
        const auto index = zip_file_add(archive, name.c_str(), content, ZIP_FL_ENC_UTF_8);
        zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), ZIP_CM_STORE, 0);
    }
    require(zip_close(archive) == 0, "a zip file that could not be made");
    zip_stat_t status;
    zip_source_stat(source, &status);
    std::string bytes(status.size, '\0');
    zip_source_open(source);
    zip_source_read(source, bytes.data(), bytes.size());
    zip_source_close(source);
    zip_source_free(source);
    return bytes;
}

const XmlTree* XmlTree::find(std::string_view child) const
{
    for (const auto& element : children)
        if (element.name == child) return &element;
    return nullptr;
}

const XmlTree& XmlTree::get(std::initializer_list<std::string_view> path) const
{
    const auto* element = this;
    for (const auto step : path) {
        element = element->find(step);
        require(element != nullptr, "an element is missing", step);
    }
    return *element;
}

std::vector<const XmlTree*> XmlTree::findAll(std::string_view child) const
{
    std::vector<const XmlTree*> found;
    for (const auto& element : children)
        if (element.name == child) found.push_back(&element);
    return found;
}

void XmlTree::visit(const std::function<void(const XmlTree&)>& visitor) const
{
    visitor(*this);
    for (const auto& element : children) element.visit(visitor);
}

XmlTree readXml(const std::string& name, const std::string& bytes)
{
    TreeBuilder builder;
    const std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser(
        XML_ParserCreateNS("UTF-8", '\n'), XML_ParserFree);
    XML_SetUserData(parser.get(), &builder);
    XML_SetElementHandler(parser.get(), TreeBuilder::start, TreeBuilder::end);
    XML_SetCharacterDataHandler(parser.get(), TreeBuilder::addText);
    const auto status = XML_Parse(parser.get(), bytes.data(), static_cast<int>(bytes.size()), 1);
    const auto* const reason = XML_ErrorString(XML_GetErrorCode(parser.get()));
    const auto place = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser.get()));
    require(status == XML_STATUS_OK, "a part that is not well-formed",
            name + ", " + (reason != nullptr ? reason : "") + ": " +
                bytes.substr(place > 200 ? place - 200 : 0, 400));
    return builder.take();
}

Parts readSoundPackage(const std::string& bytes)
{
    auto parts = readParts(bytes);
    for (const auto& [name, content] : parts) {
        if (isXml(name)) readXml(name, content);
        if (name.ends_with(".xlsx")) readSoundPackage(content);
    }
    return parts;
}

}  // namespace quillon::fuzz
