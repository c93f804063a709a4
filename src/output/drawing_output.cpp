// What all kinds of drawing output share.
#include "output/drawing_output.h"

#include "sima/reader/sima_reader.h"
#include "sima/text/path.h"

namespace fenmark::output {

std::string_view DrawingOutput::fileNameOf(const sima::SimaReader& reader) {
    if (path_ != reader.filePath) {
        path_ = reader.filePath;
        fileName_ = host::fileNameOfPath(sima::textOfPath(path_));
    }
    return fileName_;
}

} // namespace fenmark::output
