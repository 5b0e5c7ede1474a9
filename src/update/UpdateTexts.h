// What the update says to the user, in both interface languages.
#pragma once

struct BilingualText {
    const wchar_t *english;
    const wchar_t *chinese;

    const wchar_t *in(bool useEnglish) const { return useEnglish ? english : chinese; }
};

namespace UpdateTexts {

constexpr BilingualText kChecking{L"Checking", L"检查中"};
constexpr BilingualText kNoNewVersion{L"Can't find new version", L"没有发现新版本"};
constexpr BilingualText kNewVersion{L"New version found", L"发现新版本"};
constexpr BilingualText kStartDownload{L"Start downloading", L"开始下载"};
constexpr BilingualText kDownloading{L"Downloading,please DON'T leaves this page...",
                                     L"下载中，请勿离开本页面..."};
constexpr BilingualText kDownloaded{L"Download Success", L"下载成功"};
constexpr BilingualText kDownloadFailed{L"Download Failed", L"下载失败"};
constexpr BilingualText kIllegalInstaller{L"Illeagal installer package", L"非法安装包"};
constexpr BilingualText kConsent{L"Download completed,press OK to upgrade", L"下载结束，升级请按OK键"};
constexpr wchar_t kConsentTitle[] = L"upgrade";

// All that the status label shows.
constexpr BilingualText kStatuses[] = {kChecking,    kNoNewVersion, kNewVersion,     kStartDownload,
                                       kDownloading, kDownloaded,   kDownloadFailed, kIllegalInstaller};

} // namespace UpdateTexts
