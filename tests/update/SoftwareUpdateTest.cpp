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
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

namespace {

const std::string kInstalled = "the installed package";
const std::string kNewer = "a newer package, " + std::string(70000, 'n');
constexpr char kInformationPath[] = "kit\\qor_updateinfo.dat", kInstallerPath[] = "kit\\setup.exe";
constexpr int kPatienceMs = 30000; // for what comes within a second on an idle machine

std::string entryOf(const std::string &installer) {
    return installerEntry(crcRegister(installer.data(), installer.size()));
}

void writeFile(const fs::path &path, const std::string &bytes) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << bytes;
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
    std::unique_ptr<QWidget> window_ = std::make_unique<QWidget>();
    QLabel *const status_ = new QLabel(window_.get());
    QProgressBar *const bar_ = new QProgressBar(window_.get());
    QPushButton *const check_ = new QPushButton(window_.get());
    std::unique_ptr<SoftwareUpdate> update_ =
        std::make_unique<SoftwareUpdate>(UpdateWidgets{status_, bar_, check_}, language_);

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
        script_.files[kInformationPath] = entryOf("something older") + "\r\n" + entryOf(kNewer);
        script_.files[kInstallerPath] = kNewer;
        server_.setScript(script_);
    }
    void TearDown() override { fs::remove_all(testRoot()); }

    bool awaitStatus(const QString &text) {
        return QTest::qWaitFor([&] { return status_->text() == text; }, kPatienceMs);
    }
    bool awaitEnd() {
        return QTest::qWaitFor([&] { return check_->isEnabled(); }, kPatienceMs);
    }
    void expectNothingSavedOrStarted() {
        EXPECT_FALSE(fs::is_regular_file(saved_));
        EXPECT_EQ(DeviceRecorder::instance().calls.size(), 0u);
    }
};

TEST_F(SoftwareUpdateTest, CheckReportsEachStep) {
    EXPECT_EQ(update_->checkForUpdate(), CheckResult::NewVersion);
    const struct {
        std::string information;
        CheckResult result;
    } rows[] = {
        {entryOf(kNewer) + "\n" + entryOf(kInstalled) + "\n", CheckResult::IsCurrent},
        {std::string("x\0", 2) + entryOf(kInstalled), CheckResult::NewVersion}, // nothing after a NUL counts
        {"", CheckResult::EmptyInformation},
    };
    for (const auto &row : rows) {
        script_.files[kInformationPath] = row.information;
        server_.setScript(script_);
        EXPECT_EQ(update_->checkForUpdate(), row.result) << row.information;
    }
    server_.setScript({});
    EXPECT_EQ(update_->checkForUpdate(), CheckResult::NoInformation);
    script_.steps["PASS"] = {"", FtpStep::StaysSilent};
    server_.setScript(script_);
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(update_->checkForUpdate(), CheckResult::NoInformation);
    EXPECT_LT(clock.elapsed(), 8000);
    fs::remove(backup_);
    EXPECT_EQ(update_->checkForUpdate(), CheckResult::NoPackageCopy);
    fs::resize_file(configuration_, 343);
    EXPECT_EQ(update_->checkForUpdate(), CheckResult::NoConfiguration);
    Registry::DeleteValue(ProductSettings::kProductKey, L"InstallPath");
    bar_->setValue(33);
    EXPECT_EQ(update_->checkForUpdate(), CheckResult::NoConfiguration);
    EXPECT_EQ(bar_->value(), 0);
}

TEST_F(SoftwareUpdateTest, StartUpCheckShowsTheOutcomeAndDownloadsNothing) {
    QPushButton updateButton;
    QSignalSpy clicked(&updateButton, &QPushButton::clicked);
    update_->checkAtStart(&updateButton);
    EXPECT_EQ(status_->text(), "New version found");
    EXPECT_EQ(clicked.count(), 1);
    fs::remove(configuration_);
    language_.code = 0;
    update_->checkAtStart(&updateButton);
    EXPECT_EQ(status_->text(), QStringLiteral("没有发现新版本"));
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_THAT(server_.commands(), testing::Not(Contains(HasSubstr("setup.exe"))));
}

TEST_F(SoftwareUpdateTest, InstallerIsSavedAndStartedAfterConsent) {
    const struct {
        bool english, consents, isInTheWay; // a folder of the file's name
    } rows[] = {{true, true, false}, {true, false, false}, {false, true, true}};
    for (const auto &row : rows) {
        DeviceRecorder::instance().reset();
        fs::remove(saved_);
        if (row.isInTheWay)
            fs::create_directories(saved_);
        language_.code = row.english;
        BoxAnswerer answerer(row.consents ? 0 : 1);
        check_->click();
        EXPECT_EQ(status_->text(), row.english ? "Start downloading" : QStringLiteral("开始下载"));
        EXPECT_TRUE(awaitStatus(row.english ? "Download Success" : QStringLiteral("下载成功")));
        EXPECT_EQ(bar_->value(), 100);
        EXPECT_EQ(answerer.box().title, L"upgrade");
        EXPECT_EQ(answerer.box().text,
                  row.english ? L"Download completed,press OK to upgrade" : L"下载结束，升级请按OK键");
        EXPECT_EQ(answerer.box().owner, nullptr);
        if (row.consents && !row.isInTheWay) {
            EXPECT_TRUE(
                QTest::qWaitFor([] { return !DeviceRecorder::instance().calls.empty(); }, kPatienceMs));
            EXPECT_THAT(DeviceRecorder::instance().calls,
                        ElementsAre("_start_task(qor_setup.exe, null, 5, " + temporary_.string() + "\\)"));
            EXPECT_EQ(fs::file_size(saved_), kNewer.size());
        }
        EXPECT_TRUE(awaitEnd());
        if (!row.consents || row.isInTheWay)
            expectNothingSavedOrStarted();
    }
}

TEST_F(SoftwareUpdateTest, BadDownloadsEndWithoutAnInstaller) {
    for (const std::string &installer : {kNewer.substr(1), std::string()}) {
        script_.files[kInstallerPath] = installer;
        server_.setScript(script_);
        check_->click();
        check_->click(); // disabled: one download at a time
        EXPECT_FALSE(check_->isEnabled());
        EXPECT_TRUE(awaitStatus("Illeagal installer package")) << status_->text().toStdString();
        EXPECT_TRUE(awaitEnd());
        expectNothingSavedOrStarted();
    }
    script_.files.erase(kInstallerPath);
    server_.setScript(script_);
    check_->click();
    EXPECT_TRUE(awaitStatus("Download Failed")) << status_->text().toStdString();
    expectNothingSavedOrStarted();
}

TEST_F(SoftwareUpdateTest, WindowMayCloseDuringADownload) {
    script_.pieceSize = kNewer.size() / 10;
    server_.setScript(script_);
    check_->click();
    ASSERT_TRUE(awaitStatus("Downloading,please DON'T leaves this page..."));
    update_.reset();
    window_.reset();
    // The thread goes on to the end, with nobody to tell and no box to show.
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            const std::vector<std::string> commands = server_.commands();
            return std::count(commands.begin(), commands.end(), "QUIT") == 2; // of the check and the download
        },
        kPatienceMs));
    QTest::qWait(300);
    EXPECT_EQ(FindWindowW(L"#32770", L"upgrade"), nullptr);
    expectNothingSavedOrStarted();
}

} // namespace
