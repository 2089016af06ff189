#include "frame/png_writer.h"

#include <QFile>

#include <csetjmp>
#include <cstdio>
#include <png.h>

namespace {

// The libpng part, with no C++ object alive across its error jump.
bool writeRows(std::FILE* file, const QImage& rgb) {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    if (!png)
        return false;
    png_infop info = png_create_info_struct(png);
    if (!info || setjmp(png_jmpbuf(png))) {
        png_destroy_write_struct(&png, &info);
        return false;
    }
    png_init_io(png, file);
    png_set_IHDR(png, info, png_uint_32(rgb.width()), png_uint_32(rgb.height()), 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_NONE);
    png_set_compression_level(png, 1);
    png_write_info(png, info);
    for (int y = 0; y < rgb.height(); ++y)
        png_write_row(png, rgb.constScanLine(y));
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return true;
}

} // namespace

bool writeFastPng(const QImage& image, const QString& path) {
    if (image.isNull())
        return false;
    const QImage rgb = image.convertToFormat(QImage::Format_RGB888);
    std::FILE* file = std::fopen(QFile::encodeName(path).constData(), "wb");
    if (!file)
        return false;
    const bool written = writeRows(file, rgb);
    const bool closed = std::fclose(file) == 0;
    return written && closed;
}
