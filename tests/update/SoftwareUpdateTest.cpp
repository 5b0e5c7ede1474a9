#include "update/SoftwareUpdate.h"

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "support/BoxAnswerer.h"
#include "support/DeviceRecorder.h"
#include "update/Crc32.h"
#include "update/ftp/ScriptedFtpServer.h"
#include "update/UpdateInfo.h"

#include <fstream>
#include <gtest/gtest.h>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

namespace fs = std::filesystem;

namespace {

const fs::path kFolder = fs::temp_directory_path() / "qor_update_test";
const std::string kNewer = "a newer package, " + std::string(70000, 'n');

std::string entryOf(const std::string &installer) {
    return installerEntry(crcRegister(installer.data(), installer.size()));
}

// The update with its widgets, a server, and a folder that is the installation's and the temporary one.
class SoftwareUpdateTest : public testing::Test {
protected:
    const fs::path backup_ = kFolder / "backup" / "setup_backup.exe",
                   configuration_ = kFolder / "qor_netcfg.fsc", saved_ = kFolder / "qor_setup.exe";
    FtpScript script_;
    std::unique_ptr<ScriptedFtpServer> server_;
    InterfaceLanguage language_;
    std::unique_ptr<QWidget> window_ = std::make_unique<QWidget>();
    QLabel *const status_ = new QLabel(window_.get());
    QProgressBar *const bar_ = new QProgressBar(window_.get());
    QPushButton *const check_ = new QPushButton(window_.get());
    std::unique_ptr<SoftwareUpdate> update_ =
        std::make_unique<SoftwareUpdate>(UpdateWidgets{status_, bar_, check_}, language_);

    void SetUp() override {
        DeviceRecorder::instance().reset();
        language_.code = 1;
        fs::create_directories(backup_.parent_path());
        std::ofstream(backup_) << "installed";
        SetEnvironmentVariableW(L"TMP", kFolder.c_str());
        Registry::CreateKey(ProductSettings::kProductKey);
        Registry::WriteStringValue(ProductSettings::kProductKey, L"InstallPath", kFolder.wstring());
        serve(entryOf(kNewer), kNewer);
    }
    void TearDown() override { fs::remove_all(kFolder); }

    void serve(const std::string &information, const std::optional<std::string> &installer) {
        script_.files = {{"kit\\qor_updateinfo.dat", information}};
        if (installer)
            script_.files["kit\\setup.exe"] = *installer;
        server_ = std::make_unique<ScriptedFtpServer>(script_);
        const ServerConfig config{{"127.0.0.1", server_->port(), "maker", "secret"}, 0, "kit"};
        const ServerConfigRecord record = makeServerConfig(config, {1, 2, 3, 4, 5, 6, 7, 8});
        std::ofstream(configuration_, std::ios::binary) << std::string(record.begin(), record.end());
    }
};

TEST_F(SoftwareUpdateTest, ChecksStepByStep) {
    QPushButton updateButton;
    update_->checkAtStart(&updateButton);
    EXPECT_EQ(status_->text(), "New version found");
    serve(std::string("x\0", 2) + entryOf("installed"), kNewer);
    EXPECT_EQ(update_->checkForUpdate(), CheckResult::NewVersion) << "nothing after a NUL counts";
    serve("", kNewer);
    EXPECT_EQ(update_->checkForUpdate(), CheckResult::EmptyInformation);
    script_.replies["PASS"] = {"530 no\r\n"};
    serve("", "");
    EXPECT_EQ(update_->checkForUpdate(), CheckResult::NoInformation);
    fs::remove(backup_);
    EXPECT_EQ(update_->checkForUpdate(), CheckResult::NoPackageCopy);
    fs::resize_file(configuration_, 343);
    EXPECT_EQ(update_->checkForUpdate(), CheckResult::NoConfiguration);
    language_.code = 0;
    bar_->setValue(33);
    update_->checkAtStart(&updateButton);
    EXPECT_EQ(status_->text(), QStringLiteral("没有发现新版本"));
    EXPECT_EQ(bar_->value(), 0);
}

TEST_F(SoftwareUpdateTest, OnlyAListedInstallerIsSavedAndStartedAfterConsent) {
    const std::string start = "_start_task(qor_setup.exe, null, 5, " + kFolder.string() + "\\)";
    const struct {
        std::optional<std::string> installer;
        std::optional<int> button; // 0: consents, 1: declines
        bool isInTheWay;           // a folder of the file's name
        const char *status;
        std::vector<std::string> calls;
    } rows[] = {
        {kNewer.substr(1), {}, false, "Illeagal installer package", {}},
        {"", {}, false, "Illeagal installer package", {}},
        {std::nullopt, {}, false, "Download Failed", {}},
        {kNewer, 1, false, "Download Success", {}},
        {kNewer, 0, true, "Download Success", {}},
        {kNewer, 0, false, "Download Success", {start}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.status);
        serve(entryOf("something older") + "\r\n" + entryOf(kNewer), row.installer);
        fs::remove(saved_);
        if (row.isInTheWay)
            fs::create_directories(saved_);
        std::optional<BoxAnswerer> answerer;
        if (row.button)
            answerer.emplace(*row.button);
        check_->click();
        check_->click(); // disabled: one download at a time
        EXPECT_TRUE(QTest::qWaitFor([&] { return check_->isEnabled(); }, 30000));
        EXPECT_EQ(status_->text(), row.status);
        EXPECT_EQ(DeviceRecorder::instance().calls, row.calls);
        EXPECT_EQ(fs::is_regular_file(saved_), !row.calls.empty());
    }
    EXPECT_EQ(bar_->value(), 100);
    EXPECT_EQ(fs::file_size(saved_), kNewer.size());
}

TEST_F(SoftwareUpdateTest, WindowMayCloseDuringADownload) {
    script_.heldLine = "RETR kit\\setup.exe";
    serve(entryOf(kNewer), kNewer);
    check_->click();
    EXPECT_EQ(status_->text(), "Start downloading");
    EXPECT_TRUE(server_->awaitLine(script_.heldLine));
    update_.reset();
    window_.reset();
    server_->release();
    // The thread goes on to the end, with nobody to tell and no box to show.
    EXPECT_TRUE(server_->awaitLine("QUIT", 2)); // of the check and the download
    QTest::qWait(300);
    EXPECT_EQ(FindWindowW(L"#32770", L"upgrade"), nullptr);
    EXPECT_FALSE(fs::exists(saved_));
}

} // namespace
