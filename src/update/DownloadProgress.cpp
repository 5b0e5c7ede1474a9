#include "update/DownloadProgress.h"

#include "update/ftp/FtpTypes.h"

ProgressDisplay progressDisplay(uint32_t stage, int32_t value) {
    if (value < 0)
        return {UpdateTexts::kDownloadFailed, std::nullopt};
    if (stage != FtpTransfer)
        return {UpdateTexts::kDownloading, std::nullopt};
    return {value == 100 ? UpdateTexts::kDownloaded : UpdateTexts::kDownloading, value};
}
