// Layout files: whatever the bytes are, a load ends with a layout that can be written and read again to the same text.
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "engine/FakeSurroundings.h"
#include "persistence/LayoutFile.h"

namespace {

std::string Reloaded(const std::string& path, const std::string& bytes, quillform::Layout& layout) {
    std::ofstream(path, std::ios::binary) << bytes;
    quillform::testing::CellMeasure measure;
    quillform::testing::FakeUser user;
    layout.ClearLayout();
    if (!quillform::LoadLayout(path, layout, measure, user)) std::abort();
    return quillform::LayoutText(layout);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string path =
        std::filesystem::temp_directory_path() / ("fuzz-layout-" + std::to_string(std::rand()));
    quillform::Layout layout;
    Reloaded(path, std::string(reinterpret_cast<const char*>(data), size), layout);
    if (!quillform::SaveLayout(path, layout, *std::make_unique<quillform::testing::FakeUser>())) std::abort();
    std::ifstream saved(path, std::ios::binary);
    const std::string once((std::istreambuf_iterator<char>(saved)), std::istreambuf_iterator<char>());
    quillform::Layout again;
    const std::string text = Reloaded(path, once, again);
    quillform::Layout third;
    if (Reloaded(path, once, third) != text) std::abort();
    return 0;
}
