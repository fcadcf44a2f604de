// JPEG, over libjpeg-turbo. The library reports errors by a jump: no object with a destructor lives in a function that
// is jumped out of.
#include "Platform/Linux/Imaging/Codec.h"

#include <csetjmp>
#include <cstdio>

#define XMD_H  // INT32 is declared.
#include <jpeglib.h>

#include <jerror.h>

namespace Platform::Imaging {

namespace {

// What the library may hold for a progressive file, whose coefficients are all kept until the end.
constexpr long maxWorkingMemory = 256L << 20U;
// Each scan of a progressive file costs a pass over the picture, and may take next to no bytes. Encoders make about
// ten.
constexpr int maxScans = 100;

struct Reader {
    jpeg_decompress_struct info;
    jpeg_error_mgr errors;
    jpeg_progress_mgr progress;
    std::jmp_buf failed;
};

Reader& ReaderOf(j_common_ptr info) {
    return *static_cast<Reader*>(info->client_data);
}

[[noreturn]] void Fail(j_common_ptr info) {
    std::longjmp(ReaderOf(info).failed, 1);
}

// The library goes on after warnings and fills up with grey. Those that mean missing or damaged picture data end it;
// bytes that are merely out of place don't.
void Message(j_common_ptr info, int level) {
    if (level >= 0) return;  // Traces.
    switch (info->err->msg_code) {
        case JWRN_HIT_MARKER:
        case JWRN_HUFF_BAD_CODE:
        case JWRN_ARITH_BAD_CODE:
        case JWRN_BOGUS_PROGRESSION:
        case JWRN_JPEG_EOF:
        case JWRN_MUST_RESYNC:
            Fail(info);
        default:
            break;
    }
}

void Progress(j_common_ptr info) {
    if (ReaderOf(info).info.input_scan_number > maxScans) Fail(info);
}

void Open(Reader& reader, Bytes encoded) {
    reader.info.err = jpeg_std_error(&reader.errors);
    reader.errors.error_exit = Fail;
    reader.errors.emit_message = Message;
    reader.errors.output_message = [](j_common_ptr) {};
    jpeg_create_decompress(&reader.info);
    reader.info.client_data = &reader;
    reader.progress.progress_monitor = Progress;
    reader.info.progress = &reader.progress;
    reader.info.mem->max_memory_to_use = maxWorkingMemory;
    jpeg_mem_src(&reader.info, encoded.data(), static_cast<unsigned long>(encoded.size()));
    jpeg_read_header(&reader.info, TRUE);
}

// Programs that write Adobe's marker store four inks inverted: 255 is none. So do, in effect, all others.
void FromInks(const JSAMPLE* inks, BYTE* row, UINT width) {
    for (UINT x = 0; x < width; ++x, inks += 4, row += 4) {
        for (int i = 0; i < 3; ++i) row[2 - i] = static_cast<BYTE>(inks[i] * inks[3] / 255);
        row[3] = 255;
    }
}

void ReadRows(Reader& reader, BYTE* pixels, UINT stride) {
    jpeg_decompress_struct& info = reader.info;
    const bool inks = info.jpeg_color_space == JCS_CMYK || info.jpeg_color_space == JCS_YCCK;
    info.out_color_space = inks ? JCS_CMYK : JCS_EXT_BGRA;
    jpeg_start_decompress(&info);
    JSAMPARRAY line = nullptr;
    if (inks) {
        line = (*info.mem->alloc_sarray)(reinterpret_cast<j_common_ptr>(&info), JPOOL_IMAGE, info.output_width * 4, 1);
    }
    while (info.output_scanline < info.output_height) {
        BYTE* row = pixels + std::size_t{info.output_scanline} * stride;
        jpeg_read_scanlines(&info, inks ? line : &row, 1);
        if (inks) FromInks(line[0], row, info.output_width);
    }
    jpeg_finish_decompress(&info);
}

bool Recognises(Bytes encoded) noexcept {
    return encoded.size() >= 3 && encoded[0] == 0xFF && encoded[1] == 0xD8 && encoded[2] == 0xFF;
}

HRESULT ReadSize(Bytes encoded, PictureSize& size) noexcept {
    Reader reader{};
    if (setjmp(reader.failed) != 0) {
        jpeg_destroy_decompress(&reader.info);
        return WINCODEC_ERR_BADHEADER;
    }
    Open(reader, encoded);
    size = {reader.info.image_width, reader.info.image_height};
    jpeg_destroy_decompress(&reader.info);
    return S_OK;
}

HRESULT Decode(Bytes encoded, const PictureSize&, BYTE* pixels, UINT stride) noexcept {
    Reader reader{};
    if (setjmp(reader.failed) != 0) {
        jpeg_destroy_decompress(&reader.info);
        return WINCODEC_ERR_BADIMAGE;
    }
    Open(reader, encoded);
    ReadRows(reader, pixels, stride);
    jpeg_destroy_decompress(&reader.info);
    return S_OK;
}

}  // namespace

const Codec jpegCodec{Recognises, ReadSize, Decode};

}  // namespace Platform::Imaging
