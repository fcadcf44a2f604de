#include "Platform/Linux/DirectWrite/FontSource.h"

#include "Platform/Linux/Base/SpareThread.h"
#include "Platform/Text/Unicode.h"

#include <hb.h>
#include <pango/pangofc-font.h>
#include <pango/pangoft2.h>
#include <sys/mman.h>

#include <algorithm>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace Platform::DirectWrite {

namespace {

// Glyphs are painted in one colour and at any size: pictures of glyphs are of no use.
std::string Rejections(std::span<const std::wstring> families) {
    std::string xml =
        "<?xml version=\"1.0\"?><fontconfig><selectfont><rejectfont>"
        "<pattern><patelt name=\"color\"><bool>true</bool></patelt></pattern>"
        "<pattern><patelt name=\"scalable\"><bool>false</bool></patelt></pattern>";
    for (const std::wstring& family : families) {
        char* const escaped = g_markup_escape_text(Utf8FromWide(family).c_str(), -1);
        xml += std::string("<pattern><patelt name=\"family\"><string>") + escaped + "</string></patelt></pattern>";
        g_free(escaped);
    }
    return xml + "</rejectfont></selectfont></fontconfig>";
}

FileDescriptor FileInMemory(std::span<const std::byte> bytes) {
    FileDescriptor file(memfd_create("font", MFD_CLOEXEC));
    while (file && !bytes.empty()) {
        const ssize_t written = write(file.Get(), bytes.data(), bytes.size());
        if (written <= 0) return {};
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return file;
}

// Measures are those of the outlines, the same at every scale.
void LeaveUnhinted(FcPattern* pattern, gpointer) {
    for (const char* const name : {FC_HINTING, FC_AUTOHINT}) {
        FcPatternDel(pattern, name);
        FcPatternAddBool(pattern, name, FcFalse);
    }
    FcPatternDel(pattern, FC_HINT_STYLE);
    FcPatternAddInteger(pattern, FC_HINT_STYLE, FC_HINT_NONE);
}

FaceOrigin OriginOf(PangoFont* font) {
    FcPattern* const pattern = pango_fc_font_get_pattern(PANGO_FC_FONT(font));
    FaceOrigin origin;
    FcChar8* file = nullptr;
    if (FcPatternGetString(pattern, FC_FILE, 0, &file) == FcResultMatch) {
        origin.file = reinterpret_cast<const char*>(file);
    }
    int index = 0;
    if (FcPatternGetInteger(pattern, FC_INDEX, 0, &index) == FcResultMatch) {
        // 0x8000 in the upper half asks for the whole range of a variable font; FreeType takes no such instance.
        const auto bits = static_cast<unsigned>(index);
        origin.index = (bits >> 16U) == 0x8000U ? bits & 0xFFFFU : bits;
    }
    FcBool embolden = FcFalse;
    origin.embolden = FcPatternGetBool(pattern, FC_EMBOLDEN, 0, &embolden) == FcResultMatch && embolden;
    FcMatrix* matrix = nullptr;
    if (FcPatternGetMatrix(pattern, FC_MATRIX, 0, &matrix) == FcResultMatch && matrix->xx != 0.0) {
        origin.slant = matrix->xy / matrix->xx;
    }
    unsigned count = 0;
    const int* const coordinates = hb_font_get_var_coords_normalized(pango_font_get_hb_font(font), &count);
    if (coordinates) origin.coordinates.assign(coordinates, coordinates + count);
    return origin;
}

}  // namespace

std::shared_ptr<FontSource> FontSource::System() {
    // Never destroyed: whoever reads ahead, and Pango's own threads, may come to it after the statics.
    static const auto* const system = new std::shared_ptr<FontSource>(std::make_shared<FontSource>(
        std::span<const Microsoft::WRL::ComPtr<FontFile>>{}, std::span<const std::wstring>{}));
    return *system;
}

std::shared_future<void> FontSource::ReadSystemAhead() {
    // Fonts that can't be read are for those to report who set text in them.
    const auto task = std::make_shared<std::packaged_task<void()>>([] { System(); });
    std::shared_future<void> done = task->get_future().share();
    std::function<void()> work = [task] { (*task)(); };
    if (SpareThread::Hand(work)) return done;
    try {
        return std::async(std::launch::async, std::move(work)).share();
    } catch (const std::system_error&) {
        return {};  // No thread to spare: read by whoever asks first.
    }
}

FontSource::FontSource(std::span<const Microsoft::WRL::ComPtr<FontFile>> files, std::span<const std::wstring> families)
    : config_(FcInitLoadConfig()) {
    if (!config_) throw std::runtime_error("no font configuration");
    const std::string xml = Rejections(families);
    FcConfigParseAndLoadFromMemory(config_, reinterpret_cast<const FcChar8*>(xml.c_str()), FcFalse);
    FcConfigBuildFonts(config_);
    for (const auto& file : files) {
        // Fontconfig reads names only.
        FileDescriptor& memory = files_.emplace_back(FileInMemory(file->Bytes()));
        const std::string path = "/proc/self/fd/" + std::to_string(memory.Get());
        FcConfigAppFontAddFile(config_, reinterpret_cast<const FcChar8*>(path.c_str()));
    }
    // Pango starts reading the process's configuration as soon as it has a map, and so does librsvg: there is one then.
    static std::once_flag current;
    std::call_once(current, FcConfigSetCurrent, config_);
    fontMap_ = pango_ft2_font_map_new();
    pango_fc_font_map_set_config(PANGO_FC_FONT_MAP(fontMap_), config_);
    pango_fc_font_map_set_default_substitute(PANGO_FC_FONT_MAP(fontMap_), LeaveUnhinted, nullptr, nullptr);
    context_ = pango_font_map_create_context(fontMap_);
    pango_context_set_round_glyph_positions(context_, FALSE);
}

FontSource::~FontSource() {
    faces_.clear();
    g_object_unref(context_);
    g_object_unref(fontMap_);
    FcConfigDestroy(config_);
}

FontSource::Session::Session(FontSource& source, const FontRequest& request)
    : source_(source), lock_(source.mutex_), description_(pango_font_description_new()) {
    auto known = source.families_.find(request.family);
    if (known == source.families_.end()) {
        known =
            source.families_.emplace(request.family, ChooseFamily(source.config_, Utf8FromWide(request.family))).first;
    }
    family_ = known->second;
    emSize_ = request.size * family_.sizeFactor;
    const std::string locale = Utf8FromWide(request.locale);
    language_ = locale.empty() ? pango_language_get_default() : pango_language_from_string(locale.c_str());
    const int stretch = request.stretch == DWRITE_FONT_STRETCH_UNDEFINED ? DWRITE_FONT_STRETCH_NORMAL : request.stretch;
    pango_font_description_set_family(description_, family_.name.c_str());
    pango_font_description_set_weight(description_, static_cast<PangoWeight>(request.weight));
    pango_font_description_set_style(description_, static_cast<PangoStyle>(request.style));
    pango_font_description_set_stretch(description_, static_cast<PangoStretch>(stretch - 1));
    pango_font_description_set_absolute_size(description_, static_cast<double>(emSize_) * PANGO_SCALE);
    pango_context_set_font_description(source.context_, description_);
    pango_context_set_language(source.context_, language_);
}

FontSource::Session::~Session() {
    if (base_) g_object_unref(base_);
    pango_font_description_free(description_);
}

PangoFont* FontSource::Session::BaseFont() {
    if (!base_) base_ = pango_font_map_load_font(source_.fontMap_, source_.context_, description_);
    return base_;
}

Microsoft::WRL::ComPtr<FontFace> FontSource::Session::Face(PangoFont* font) {
    static const GQuark key = g_quark_from_static_string("velorinth-face");
    if (!font) return nullptr;
    if (auto* const known = static_cast<FontFace*>(g_object_get_qdata(G_OBJECT(font), key))) return known;
    FaceOrigin origin = OriginOf(font);
    auto& faces = source_.faces_;
    auto found = std::ranges::find(faces, origin, [](const auto& each) -> const FaceOrigin& { return each.first; });
    if (found == faces.end()) {
        try {
            Microsoft::WRL::ComPtr<FontFace> face;
            face.Attach(new FontFace(origin));
            found = faces.emplace(faces.end(), std::move(origin), std::move(face));
        } catch (const std::runtime_error&) {
            return nullptr;  // Removed since the fonts were read.
        }
    }
    g_object_set_qdata(G_OBJECT(font), key, found->second.Get());  // The source keeps the face as long as the font.
    return found->second;
}

bool FontSource::Session::IsOfFamily(PangoFont* font) const {
    FcPattern* const pattern = pango_fc_font_get_pattern(PANGO_FC_FONT(font));
    FcChar8* name = nullptr;
    for (int n = 0; FcPatternGetString(pattern, FC_FAMILY, n, &name) == FcResultMatch; ++n) {
        if (FcStrCmpIgnoreCase(name, reinterpret_cast<const FcChar8*>(family_.name.c_str())) == 0) return true;
    }
    return false;
}

}  // namespace Platform::DirectWrite
