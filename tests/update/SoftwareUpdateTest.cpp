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
#include <functional>
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

// The update with its widgets, an installation folder, a server and a temporary folder of its own.
class SoftwareUpdateTest : public testing::Test {
protected:
    static const fs::path &testRoot() {
        static const fs::path root = fs::temp_directory_path() / "qor_update_test"; // before TMP is changed
        return root;
    }
    fs::path root_ = testRoot();
    fs::path installation_ = root_ / "installation";
    fs::path temporary_ = root_ / "temp";
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
        fs::remove_all(root_);
        fs::create_directories(temporary_);
        SetEnvironmentVariableW(L"TMP", temporary_.c_str());
        Registry::CreateKey(ProductSettings::kProductKey);
        Registry::WriteStringValue(ProductSettings::kProductKey, L"InstallPath", installation_.wstring());
        writeFile(installation_ / "backup" / "setup_backup.exe", kInstalled);
        writeConfig(configRecord());
        script_.files["kit\\qor_updateinfo.dat"] = entryOf("something older") + "\r\n" + entryOf(kNewer);
        script_.files["kit\\setup.exe"] = kNewer;
        server_.setScript(script_);
        makeWindow();
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

    void TearDown() override {
        update_.reset();
        fs::remove_all(root_);
    }

    ServerConfigRecord configRecord() const {
        ServerConfig config;
        config.server.address = "127.0.0.1";
        config.server.port = server_.port();
        config.server.user = "maker";
        config.server.password = "secret";
        config.folder = "kit";
        return makeServerConfig(config, {1, 2, 3, 4, 5, 6, 7, 8});
    }

    void writeConfig(const ServerConfigRecord &record, size_t size = 344) {
        std::string bytes(reinterpret_cast<const char *>(record.data()), record.size());
        bytes.resize(size);
        writeFile(installation_ / "qor_netcfg.fsc", bytes);
    }

    void changeScript(const std::function<void(FtpScript &)> &change) {
        change(script_);
        server_.setScript(script_);
    }

    // Runs the event loop until the label shows the text; keeps every text it has shown.
    bool awaitStatus(const QString &text, int milliseconds = 8000) {
        QElapsedTimer timer;
        timer.start();
        while (status_->text() != text && timer.elapsed() < milliseconds) {
            QApplication::processEvents(QEventLoop::AllEvents, 10);
            Sleep(1);
        }
        return status_->text() == text;
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

    fs::path savedInstaller() const { return temporary_ / "qor_setup.exe"; }
};

TEST_F(SoftwareUpdateTest, CheckKnowsANewVersionByItsCrc) {
    EXPECT_EQ(update_->checkForUpdate(), 1);
    EXPECT_EQ(bar_->value(), 0);
    EXPECT_THAT(server_.commands(), ElementsAre("USER maker", "PASS secret", "SIZE kit\\qor_updateinfo.dat",
                                                "TYPE I", "PASV", "RETR kit\\qor_updateinfo.dat", "QUIT"));
}

TEST_F(SoftwareUpdateTest, CheckReportsEachStep) {
    const auto information = [this](const std::string &bytes) {
        changeScript([&](FtpScript &script) { script.files["kit\\qor_updateinfo.dat"] = bytes; });
        return update_->checkForUpdate();
    };
    EXPECT_EQ(information(entryOf(kInstalled)), -6);
    EXPECT_EQ(information(entryOf(kNewer) + "\n" + entryOf(kInstalled) + "\n"), -6);
    EXPECT_EQ(information(std::string(1 << 20, '\n') + entryOf(kInstalled)), -6);
    EXPECT_EQ(information(std::string("x\0", 2) + entryOf(kInstalled)), 1); // nothing after a NUL counts
    EXPECT_EQ(information(""), -5);
    changeScript([](FtpScript &script) { script.files.clear(); });
    EXPECT_EQ(update_->checkForUpdate(), -4);

    writeFile(installation_ / "backup" / "setup_backup.exe", "");
    EXPECT_EQ(update_->checkForUpdate(), -3);
    fs::remove(installation_ / "backup" / "setup_backup.exe");
    EXPECT_EQ(update_->checkForUpdate(), -3);
}

TEST_F(SoftwareUpdateTest, CheckNeedsAWholeConfigurationFile) {
    writeConfig(configRecord(), 343);
    EXPECT_EQ(update_->checkForUpdate(), -1);
    writeConfig(configRecord(), 345);
    EXPECT_EQ(update_->checkForUpdate(), -1);
    ServerConfigRecord damaged = configRecord();
    damaged[100] ^= 1;
    writeConfig(damaged);
    EXPECT_EQ(update_->checkForUpdate(), -1);
    fs::remove(installation_ / "qor_netcfg.fsc");
    EXPECT_EQ(update_->checkForUpdate(), -1);
    Registry::DeleteValue(ProductSettings::kProductKey, L"InstallPath");
    EXPECT_EQ(update_->checkForUpdate(), -1);
    EXPECT_TRUE(server_.commands().empty());
}

TEST_F(SoftwareUpdateTest, StartUpCheckShowsTheOutcomeAndDownloadsNothing) {
    QSignalSpy clicked(updateButton_, &QPushButton::clicked);
    update_->checkAtStart(updateButton_);
    EXPECT_EQ(status_->text(), "New version found");
    EXPECT_EQ(clicked.count(), 1);
    language_.code = 0;
    update_->checkAtStart(updateButton_);
    EXPECT_EQ(status_->text(), QStringLiteral("发现新版本"));

    writeConfig(configRecord(), 343);
    update_->checkAtStart(updateButton_);
    EXPECT_EQ(status_->text(), QStringLiteral("没有发现新版本"));
    language_.code = 1;
    update_->checkAtStart(updateButton_);
    EXPECT_EQ(status_->text(), "Can't find new version");
    EXPECT_EQ(clicked.count(), 2);
    for (const std::string &command : server_.commands())
        EXPECT_EQ(command.find("setup.exe"), std::string::npos) << command;
}

TEST_F(SoftwareUpdateTest, ClickWithoutANewVersion) {
    fs::remove(installation_ / "qor_netcfg.fsc");
    check_->click();
    EXPECT_EQ(status_->text(), "Can't find new version");
    EXPECT_EQ(bar_->value(), 0);
}

TEST_F(SoftwareUpdateTest, NewInstallerIsSavedAndStartedAfterConsent) {
    BoxAnswerer answerer(0);
    check_->click();
    EXPECT_EQ(status_->text(), "Start downloading");
    ASSERT_TRUE(await([] { return DeviceRecorder::instance().countOf("_start_task") == 1; }));
    const BoxAnswerer::Box &box = answerer.box();
    EXPECT_EQ(box.title, L"upgrade");
    EXPECT_EQ(box.text, L"Download completed,press OK to upgrade");
    EXPECT_EQ(box.buttons.size(), 2u);
    EXPECT_EQ(box.owner, nullptr);
    EXPECT_EQ(status_->text(), "Download Success");
    EXPECT_EQ(bar_->value(), 100);
    EXPECT_TRUE(readFile(savedInstaller()) == kNewer);
    EXPECT_THAT(DeviceRecorder::instance().calls,
                ElementsAre("_start_task(qor_setup.exe, null, 5, " + temporary_.string() + "\\)"));
}

TEST_F(SoftwareUpdateTest, NothingHappensWithoutConsent) {
    language_.code = 0;
    BoxAnswerer answerer(1);
    check_->click();
    EXPECT_EQ(status_->text(), QStringLiteral("开始下载"));
    ASSERT_TRUE(awaitStatus(QStringLiteral("下载成功")));
    EXPECT_EQ(answerer.box().text, L"下载结束，升级请按OK键");
    await([] { return false; }, 200);
    EXPECT_EQ(DeviceRecorder::instance().calls.size(), 0u);
    EXPECT_FALSE(fs::exists(savedInstaller()));
}

// For each: what the label says at the end, nothing saved, nothing started.
TEST_F(SoftwareUpdateTest, BadDownloadsEndWithoutAnInstaller) {
    const char *const illegal = "Illeagal installer package", *const failed = "Download Failed";
    const struct {
        const char *name;
        std::function<void(FtpScript &)> change;
        const char *status;
    } rows[] = {
        {"changed", [](FtpScript &script) { script.files["kit\\setup.exe"][9] ^= 1; }, illegal},
        {"cut", [](FtpScript &script) { script.pieces["kit\\setup.exe"] = {kNewer.substr(0, 5000)}; },
         illegal},
        {"announced smaller",
         [](FtpScript &script) { script.replies["SIZE kit\\setup.exe"] = "213 1000\r\n"; }, illegal},
        {"announced larger",
         [](FtpScript &script) { script.replies["SIZE kit\\setup.exe"] = "213 99999\r\n"; }, illegal},
        {"empty", [](FtpScript &script) { script.files["kit\\setup.exe"].clear(); }, illegal},
        {"missing", [](FtpScript &script) { script.files.erase("kit\\setup.exe"); }, failed},
        {"refused", [](FtpScript &script) { script.replies["RETR kit\\setup.exe"] = "550 no\r\n"; }, failed},
        {"connection lost", [](FtpScript &script) { script.closesAt = "RETR kit\\setup.exe"; }, failed},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        FtpScript bad = script_;
        row.change(bad);
        server_.setScript(bad);
        check_->click();
        EXPECT_EQ(status_->text(), "Start downloading");
        EXPECT_TRUE(awaitStatus(row.status)) << status_->text().toStdString();
        await([] { return false; }, 50);
        EXPECT_EQ(status_->text(), row.status);
        EXPECT_FALSE(fs::exists(savedInstaller()));
        EXPECT_EQ(DeviceRecorder::instance().calls.size(), 0u);
    }
}

TEST_F(SoftwareUpdateTest, ProgressIsShownWhileTheInstallerComes) {
    std::string bytes = kNewer;
    changeScript([&](FtpScript &script) {
        const size_t half = bytes.size() / 2;
        script.pieces["kit\\setup.exe"] = {bytes.substr(0, half), bytes.substr(half)};
    });
    std::vector<int> shown;
    QObject::connect(bar_, &QProgressBar::valueChanged, [&](int value) { shown.push_back(value); });
    BoxAnswerer answerer(1);
    check_->click();
    EXPECT_TRUE(awaitStatus("Downloading,please DON'T leaves this page..."));
    EXPECT_TRUE(awaitStatus("Download Success"));
    EXPECT_TRUE(answerer.box().seen);
    ASSERT_GE(shown.size(), 3u);
    EXPECT_EQ(shown.front(), 0);
    EXPECT_TRUE(std::is_sorted(shown.begin(), shown.end()));
    EXPECT_EQ(shown.back(), 100);
}

// The box is answered, but the bytes cannot be written: what is in the way is neither changed nor started.
TEST_F(SoftwareUpdateTest, InstallerThatCannotBeSavedIsNotStarted) {
    fs::create_directories(savedInstaller());
    BoxAnswerer answerer(0);
    check_->click();
    ASSERT_TRUE(awaitStatus("Download Success"));
    EXPECT_TRUE(answerer.box().seen);
    await([] { return false; }, 200);
    EXPECT_EQ(DeviceRecorder::instance().calls.size(), 0u);
    EXPECT_TRUE(fs::is_directory(savedInstaller()));
}

TEST_F(SoftwareUpdateTest, WindowMayCloseDuringADownload) {
    changeScript(
        [](FtpScript &script) { // a good installer, so that only the missing window keeps the box away
            std::vector<std::string> &pieces = script.pieces["kit\\setup.exe"];
            for (size_t at = 0; at < kNewer.size(); at += kNewer.size() / 10)
                pieces.push_back(kNewer.substr(at, kNewer.size() / 10));
        });
    for (bool widgetsFirst : {true, false}) {
        check_->click();
        ASSERT_TRUE(awaitStatus("Downloading,please DON'T leaves this page..."));
        if (widgetsFirst)
            window_.reset();
        update_.reset();
        window_.reset();
        // The thread goes on to the end, with nobody to tell and no box to show.
        const size_t sessions = widgetsFirst ? 2 : 4; // of checks and downloads
        await([&] {
            const std::vector<std::string> commands = server_.commands();
            return static_cast<size_t>(std::count(commands.begin(), commands.end(), "QUIT")) >= sessions;
        });
        await([] { return false; }, 300);
        EXPECT_EQ(FindWindowW(L"#32770", L"upgrade"), nullptr);
        EXPECT_FALSE(fs::exists(savedInstaller()));
        EXPECT_EQ(DeviceRecorder::instance().calls.size(), 0u);
        if (widgetsFirst)
            makeWindow();
    }
}

} // namespace

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
