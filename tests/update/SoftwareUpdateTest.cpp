#include "update/SoftwareUpdate.h"

#include "helpers/ProductSettings.h"
#include "helpers/Registry.h"
#include "support/BoxAnswerer.h"
#include "support/DeviceRecorder.h"
#include "update/Crc32.h"
#include "update/ScriptedFtpServer.h"
#include "update/UpdateInfo.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>

using testing::ElementsAre;
namespace fs = std::filesystem;

namespace {

const std::string kInstalled = "the installed package";
const std::string kNewer = "a newer package, " + std::string(70000, 'n');
constexpr char kInformationPath[] = "kit\\qor_updateinfo.dat", kInstallerPath[] = "kit\\setup.exe";
const QString kDownloading = "Downloading,please DON'T leaves this page...", kSuccess = "Download Success";

std::string entryOf(const std::string &installer) {
    return installerEntry(crcRegister(installer.data(), installer.size()));
}

void writeFile(const fs::path &path, const std::string &bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string readFile(const fs::path &path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

template<typename Condition>
bool await(Condition condition, int milliseconds = 8000) {
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < milliseconds) {
        QApplication::processEvents(QEventLoop::AllEvents, 10);
        Sleep(1);
    }
    return condition();
}

void runEventLoopFor(int milliseconds) {
    await([] { return false; }, milliseconds);
}

// The update with its widgets, an installation folder, a server and a temporary folder of its own.
class SoftwareUpdateTest : public testing::Test {
protected:
    static const fs::path &testRoot() {
        static const fs::path root = fs::temp_directory_path() / "qor_update_test"; // before TMP is changed
        return root;
    }
    fs::path installation_ = testRoot() / "installation";
    fs::path backup_ = installation_ / "backup" / "setup_backup.exe";
    fs::path configuration_ = installation_ / "qor_netcfg.fsc";
    fs::path temporary_ = testRoot() / "temp";
    fs::path saved_ = temporary_ / "qor_setup.exe";
    ScriptedFtpServer server_;
    FtpScript script_;
    InterfaceLanguage language_;
    std::unique_ptr<QWidget> window_;
    QLabel *status_ = nullptr;
    QProgressBar *bar_ = nullptr;
    QPushButton *check_ = nullptr;
    QPushButton *updateButton_ = nullptr;
    std::unique_ptr<SoftwareUpdate> update_;

    void SetUp() override {
        DeviceRecorder::instance().reset();
        language_.code = 1;
        fs::remove_all(testRoot());
        fs::create_directories(temporary_);
        SetEnvironmentVariableW(L"TMP", temporary_.c_str());
        Registry::CreateKey(ProductSettings::kProductKey);
        Registry::WriteStringValue(ProductSettings::kProductKey, L"InstallPath", installation_.wstring());
        writeFile(backup_, kInstalled);
        ServerConfig config;
        config.server.address = "127.0.0.1";
        config.server.port = server_.port();
        config.server.user = "maker";
        config.server.password = "secret";
        config.folder = "kit";
        const ServerConfigRecord record = makeServerConfig(config, {1, 2, 3, 4, 5, 6, 7, 8});
        writeFile(configuration_, std::string(record.begin(), record.end()));
        script_.files[kInformationPath] = {entryOf("something older") + "\r\n" + entryOf(kNewer)};
        script_.files[kInstallerPath] = {kNewer};
        server_.setScript(script_);
        makeWindow();
    }
    void TearDown() override {
        update_.reset();
        fs::remove_all(testRoot());
    }

    void makeWindow() {
        window_ = std::make_unique<QWidget>();
        status_ = new QLabel("untouched", window_.get());
        bar_ = new QProgressBar(window_.get());
        bar_->setRange(0, 100);
        bar_->setValue(33);
        check_ = new QPushButton(window_.get());
        updateButton_ = new QPushButton(window_.get());
        update_ = std::make_unique<SoftwareUpdate>(UpdateWidgets{status_, bar_, check_}, language_);
    }
    bool awaitStatus(const QString &text) {
        return await([&] { return status_->text() == text; });
    }
    void sendInstallerInPieces(size_t count) {
        script_.files[kInstallerPath].clear();
        for (size_t at = 0; at < kNewer.size(); at += kNewer.size() / count)
            script_.files[kInstallerPath].push_back(kNewer.substr(at, kNewer.size() / count));
        server_.setScript(script_);
    }
    void expectNothingSavedOrStarted() {
        EXPECT_FALSE(fs::is_regular_file(saved_));
        EXPECT_EQ(DeviceRecorder::instance().calls.size(), 0u);
    }
};

TEST_F(SoftwareUpdateTest, CheckReportsEachStep) {
    EXPECT_EQ(update_->checkForUpdate(), 1);
    const struct {
        std::string information;
        int32_t result;
    } rows[] = {
        {entryOf(kNewer) + "\n" + entryOf(kInstalled) + "\n", -6},
        {std::string(1 << 20, '\n') + entryOf(kInstalled), -6},
        {std::string("x\0", 2) + entryOf(kInstalled), 1}, // nothing after a NUL counts
        {"", -5},
    };
    for (const auto &row : rows) {
        script_.files[kInformationPath] = {row.information};
        server_.setScript(script_);
        EXPECT_EQ(update_->checkForUpdate(), row.result) << row.information.size();
    }
    server_.setScript({});
    EXPECT_EQ(update_->checkForUpdate(), -4);
    writeFile(backup_, "");
    EXPECT_EQ(update_->checkForUpdate(), -3);
    fs::remove(backup_);
    EXPECT_EQ(update_->checkForUpdate(), -3);
    fs::resize_file(configuration_, 343);
    EXPECT_EQ(update_->checkForUpdate(), -1);
    Registry::DeleteValue(ProductSettings::kProductKey, L"InstallPath");
    bar_->setValue(33);
    EXPECT_EQ(update_->checkForUpdate(), -1);
    EXPECT_EQ(bar_->value(), 0);
}

TEST_F(SoftwareUpdateTest, StartUpCheckShowsTheOutcomeAndDownloadsNothing) {
    QSignalSpy clicked(updateButton_, &QPushButton::clicked);
    const auto statusIn = [this](int8_t language) {
        language_.code = language;
        update_->checkAtStart(updateButton_);
        return status_->text();
    };
    EXPECT_EQ(statusIn(1), "New version found");
    EXPECT_EQ(statusIn(0), QStringLiteral("发现新版本"));
    EXPECT_EQ(clicked.count(), 2);
    fs::remove(configuration_);
    EXPECT_EQ(statusIn(1), "Can't find new version");
    EXPECT_EQ(statusIn(0), QStringLiteral("没有发现新版本"));
    EXPECT_EQ(clicked.count(), 2);
    for (const std::string &command : server_.commands())
        EXPECT_EQ(command.find("setup.exe"), std::string::npos) << command;
}

TEST_F(SoftwareUpdateTest, NewInstallerIsSavedAndStartedAfterConsent) {
    sendInstallerInPieces(2);
    std::vector<int> shown;
    QObject::connect(bar_, &QProgressBar::valueChanged, [&](int value) { shown.push_back(value); });
    BoxAnswerer answerer(0);
    check_->click();
    EXPECT_EQ(status_->text(), "Start downloading");
    EXPECT_TRUE(awaitStatus(kDownloading));
    ASSERT_TRUE(await([] { return DeviceRecorder::instance().countOf("_start_task") == 1; }));
    const BoxAnswerer::Box &box = answerer.box();
    EXPECT_EQ(box.title, L"upgrade");
    EXPECT_EQ(box.text, L"Download completed,press OK to upgrade");
    EXPECT_EQ(box.buttons.size(), 2u);
    EXPECT_EQ(box.owner, nullptr);
    EXPECT_EQ(status_->text(), kSuccess);
    EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end()));
    EXPECT_EQ(shown.front(), 0);
    EXPECT_EQ(shown.back(), 100);
    EXPECT_GE(shown.size(), 3u); // something in between
    EXPECT_TRUE(readFile(saved_) == kNewer);
    EXPECT_THAT(DeviceRecorder::instance().calls,
                ElementsAre("_start_task(qor_setup.exe, null, 5, " + temporary_.string() + "\\)"));
}

TEST_F(SoftwareUpdateTest, NothingIsStartedWithoutConsentOrAFile) {
    language_.code = 0;
    for (bool consents : {false, true}) {
        if (consents)
            fs::create_directories(saved_); // is in the way of the file
        BoxAnswerer answerer(consents ? 0 : 1);
        check_->click();
        EXPECT_EQ(status_->text(), QStringLiteral("开始下载"));
        ASSERT_TRUE(awaitStatus(QStringLiteral("下载成功")));
        EXPECT_EQ(answerer.box().text, L"下载结束，升级请按OK键");
        runEventLoopFor(200);
        expectNothingSavedOrStarted();
    }
}

TEST_F(SoftwareUpdateTest, BadDownloadsEndWithoutAnInstaller) {
    for (const std::string &installer : {kNewer.substr(1), std::string()}) {
        script_.files[kInstallerPath] = {installer};
        server_.setScript(script_);
        check_->click();
        EXPECT_TRUE(awaitStatus("Illeagal installer package")) << status_->text().toStdString();
        expectNothingSavedOrStarted();
    }
    script_.steps["RETR kit\\setup.exe"] = {"550 gone\r\n"};
    server_.setScript(script_);
    check_->click();
    EXPECT_TRUE(awaitStatus("Download Failed")) << status_->text().toStdString();
    expectNothingSavedOrStarted();
}

TEST_F(SoftwareUpdateTest, WindowMayCloseDuringADownload) {
    sendInstallerInPieces(10); // a good installer, so that only the missing window keeps the box away
    for (bool widgetsFirst : {true, false}) {
        check_->click();
        ASSERT_TRUE(awaitStatus(kDownloading));
        if (widgetsFirst)
            window_.reset();
        update_.reset();
        window_.reset();
        // The thread goes on to the end, with nobody to tell and no box to show.
        const std::ptrdiff_t sessions = widgetsFirst ? 2 : 4; // of checks and downloads
        await([&] {
            const std::vector<std::string> commands = server_.commands();
            return std::count(commands.begin(), commands.end(), "QUIT") >= sessions;
        });
        runEventLoopFor(300);
        EXPECT_EQ(FindWindowW(L"#32770", L"upgrade"), nullptr);
        expectNothingSavedOrStarted();
        if (widgetsFirst)
            makeWindow();
    }
}

} // namespace
