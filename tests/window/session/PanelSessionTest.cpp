// Sessions of the whole main window on a recorded device: any control, any value, in any order, and after
// each input everything that is shown, stored and sent is what the model says. Restarts and changes of
// language are inputs, too.
#include "window/session/PanelShown.h"

#include "pages/sound_field/SoundFieldView.h"
#include "support/BoxAnswerer.h"
#include "support/OwnHoldings.h"
#include "window/WindowTest.h"

#include <algorithm>
#include <optional>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <random>

namespace {

const std::u16string kCurveNames[] = {
    u"a", u"A", u"b", u"业", u"\uFEFFb", std::u16string(31, u'x'), u"c", u"d", u"e", u"f", u"g", u"h", u"i"};
constexpr char kTransfer[] = "_hid_trans_data(11, 12, 13, 14)";
constexpr PanelModel::Report kBatteryRequest{0x0B, 0x01};

template<typename Block>
bool same(const Block &one, const Block &other) {
    return std::memcmp(&one, &other, sizeof one) == 0;
}

QString curveFile() {
    return QCoreApplication::applicationDirPath() + "/config/eqs.bin";
}

class PanelSession : public WindowTest {
protected:
    int dice(int sides) { return static_cast<int>(random_() % static_cast<unsigned>(sides)); }
    template<typename Values>
    auto any(const Values &values) {
        return values[static_cast<size_t>(dice(static_cast<int>(std::size(values))))];
    }

    template<typename Widget>
    Widget *as(const QString &name) {
        return qobject_cast<Widget *>(widgets_.value(name));
    }

    // Levels at, around and beyond their ends; switches in all combinations, also those that the panel never
    // makes.
    PanelWorld anyWorld() {
        const struct {
            std::vector<size_t> offsets; // in the device's record
            std::vector<int> values;
        } fields[] = {
            {{20, 22, 23, 24, 25, 27, 32, 33, 43, 47, 65, 66}, {0, 1}},
            {{21, 45, 46, 48}, {0, 1, 2, 3, 4, 5}},
            {{40, 41, 42}, {-128, -1, 0, 1, 50, 99, 100, 127}},
            {{49, 50, 51, 52, 53, 54, 55, 56}, {-128, -14, -13, -12, 0, 3, 4, 5, 127}},
            {{899, 900, 901, 902, 903, 904, 905, 906, 907, 908}, {-128, -21, -20, 0, 1, 20, 21, 127}},
        };
        PanelWorld world;
        auto *bytes = reinterpret_cast<uint8_t *>(&world.device);
        std::generate_n(bytes, sizeof world.device, [&] { return static_cast<uint8_t>(dice(256)); });
        for (const auto &field : fields) {
            for (const size_t offset : field.offsets)
                bytes[offset] = static_cast<uint8_t>(any(field.values));
        }
        SystemHead &head = world.device.system;
        for (int32_t *level : {&head.micLevel, &head.monitorLevel, &head.noiseLevel})
            *level = any(std::array{0, 30, 100, 150, -1, INT32_MIN});
        world.curveFile.count = dice(11);
        world.curveFile.current = dice(10);
        for (int i = 0; i < world.curveFile.count; ++i) {
            EqCurve &curve = world.curveFile.curve[i];
            std::memcpy(curve.name, kCurveNames[i].data(), kCurveNames[i].size() * sizeof(char16_t));
            std::generate_n(curve.gain, 10, [&] { return static_cast<int8_t>(dice(41) - 20); });
        }
        world.locked = dice(2) == 1;
        world.taskRuns = dice(2) == 1;
        world.imageFollows = dice(4) > 0;
        return world;
    }

    void start(const PanelWorld &world) {
        window.reset();
        recorder.reset();
        recorder.info = world.device;
        recorder.updatesImage = world.imageFollows;
        recorder.taskRunning = world.taskRuns;
        recorder.usbIds = {11, 12, 13, 14};
        QDir().mkpath(QFileInfo(curveFile()).path());
        QFile file(curveFile());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(reinterpret_cast<const char *>(&world.curveFile), sizeof world.curveFile);
        file.close();
        ProductSettings::writeDword(L"vol_locked", world.locked);
        model_.emplace(world);
        window = std::make_unique<demo>();
        window->show();
        collectControls();
        // The battery is asked for as soon as the window is up; its first reply is all zero.
        ASSERT_TRUE(QTest::qWaitFor([this] { return !recorder.reports.empty(); }));
        const std::vector<std::string> calls = recorder.calls;
        for (size_t i = 0; i + 1 < calls.size(); ++i) // full scale goes by way of 99, half a second before
            EXPECT_TRUE(calls[i].rfind("_SetVolum(99, ", 0) != 0 ||
                        calls[i + 1].rfind("_SetVolum(100, ", 0) != 0 ||
                        recorder.callTimes[i + 1] - recorder.callTimes[i] > 450);
        compare("start");
    }

    // Every control of the pages is an input, and so are the world outside and the choice of a language.
    void collectControls() {
        // The top bar and the upgrade page have tests of their own, so has the curve file; the last four do
        // nothing.
        const QStringList others{"pushButton",      "pushButton_1",      "pushButton_2",   "pushButton_3",
                                 "pushButton_10",   "pushButton_11",     "pushButton_17",  "pushButton_18",
                                 "lineEdit_4",      "lineEdit_5",        "btn_curve_file", "pushButton_27",
                                 "btn_install_spk", "btn_uninstall_spk", "btn_install_mic"};
        widgets_.clear();
        inputs_ = {"battery", "dialogs", "language"};
        for (QWidget *widget : window->findChildren<QWidget *>(QRegularExpression("^(?!qt_).+"))) {
            const QString name = widget->objectName();
            widgets_.insert(name, widget);
            const bool isControl = qobject_cast<QAbstractButton *>(widget) ||
                                   qobject_cast<QSlider *>(widget) || qobject_cast<QComboBox *>(widget) ||
                                   qobject_cast<QLineEdit *>(widget);
            if (isControl && !others.contains(name))
                inputs_.push_back(name.toStdString());
        }
    }

    void restart() {
        window.reset();
        model_->end();
        EXPECT_EQ(recorder.calls, model_->calls);
        EXPECT_TRUE(same(recorder.system, model_->sentSystem));
        start(PanelWorld(model_->world));
    }

    // An input that the control can have now; false if there is none.
    bool choose(const std::string &control, int &value) {
        const QString name = QString::fromStdString(control);
        const auto other = [&](int now, int from, int to) {
            const int values[] = {from, to, from + dice(to - from + 1), now - 1, now + 1, 20, 50};
            value = any(values);
            return value != now && value >= from && value <= to;
        };
        curveName_ = any(kCurveNames);
        if (const auto *slider = as<QSlider>(name))
            return other(slider->value(), slider->minimum(), slider->maximum());
        if (const auto *field = as<QLineEdit>(name)) {
            value = dice(static_cast<int>(std::size(kColourTexts)));
            return field->text() != kColourTexts[value].text;
        }
        if (name == "comboBox_2" || name == "comboBox_3")
            return other(as<QComboBox>(name)->currentIndex(), 0, as<QComboBox>(name)->count() - 1);
        if (name == "pushButton_palette") {
            value = dice(256 * 256);
            return as<QPushButton>(name)->isEnabled();
        }
        if (const auto *choice = as<QRadioButton>(name))
            return !choice->isChecked();
        if (name == "battery")
            value = dice(3) | any(std::array{0, 1, 2, 255}) << 8 | any(std::array{0, 6, 7, 8, 9, 255}) << 16 |
                    dice(2) << 24;
        if (name == "language")
            value = any(std::array{0, 1, 200, -1});
        return true;
    }

    void give(const std::string &control, int value) {
        const QString name = QString::fromStdString(control);
        if (auto *slider = as<QSlider>(name)) {
            slider->setValue(value);
        } else if (auto *field = as<QLineEdit>(name)) {
            field->setText(kColourTexts[value].text);
        } else if (name == "comboBox") {
            QMetaObject::invokeMethod(as<QComboBox>(name), "activated", Q_ARG(QString, asText(curveName_)));
        } else if (auto *list = as<QComboBox>(name)) {
            list->setCurrentIndex(value);
        } else if (name == "pushButton_palette") {
            QTest::mouseClick(as<QPushButton>(name), Qt::LeftButton, {}, {value % 256, value / 256});
        } else if (name == "battery") {
            recorder.reply = {0xEE, static_cast<uint8_t>(value), static_cast<uint8_t>(value >> 8),
                              static_cast<uint8_t>(value >> 16), 0xEE};
            recorder.transferResult = value >> 24 ? 0 : 64;
            int running = 0;
            for (QTimer *timer : window->findChildren<QTimer *>())
                if (timer->interval() == 5000 && timer->isActive() && ++running == 1)
                    QMetaObject::invokeMethod(timer, "timeout");
            EXPECT_EQ(running, 1) << "the battery is asked for every five seconds";
        } else if (name == "dialogs") {
            for (const auto open : {&demo::ShowVersionDialog, &demo::OpenSettingsDialog})
                whileDialogRuns([&] { (*window.*open)(); }, [](QDialog &) {});
        } else if (name == "language") {
            ProductSettings::writeDword(L"language", static_cast<uint32_t>(value));
            window->ChooseLanguage();
        } else {
            if (name == "pushButton_24" || name == "pushButton_25")
                as<QComboBox>("comboBox")->setEditText(asText(curveName_));
            press(*as<QAbstractButton>(name));
        }
    }

    // A disabled button, which no mouse can press, must be harmless all the same: its signal is emitted.
    void press(QAbstractButton &button) {
        if (button.isVisible()) {
            const QPoint centre = button.mapTo(window.get(), button.rect().center());
            EXPECT_EQ(window->childAt(centre), &button) << "something covers it";
        }
        if (auto *box = qobject_cast<QCheckBox *>(&button))
            box->toggle();
        else if (button.isEnabled())
            button.click();
        else
            QMetaObject::invokeMethod(&button, "clicked");
    }

    QString actual(const QString &control, const QString &property, const QString &wanted) {
        const QWidget &widget = *widgets_.value(control);
        const auto flag = [](bool value) { return QString(value ? "true" : "false"); };
        if (property == "styleSheet")
            return widget.styleSheet().contains(wanted) ? wanted : widget.styleSheet();
        if (property == "lit")
            return flag(widget.styleSheet().contains("color: #FFFFFF;"));
        if (property == "isHidden")
            return flag(widget.isHidden());
        if (property == "items") {
            QString items;
            for (int i = 0; i < as<QComboBox>(control)->count(); ++i)
                items += as<QComboBox>(control)->itemText(i) + "|";
            return items;
        }
        if (property == "fromCentre") {
            const QRect ring = widgets_.value("round")->geometry();
            return QString("%1,%2")
                .arg(widget.x() + widget.width() / 2 - ring.x() - ring.width() / 2)
                .arg(widget.y() + widget.height() / 2 - ring.y() - ring.height() / 2);
        }
        return widget.property(property.toLatin1()).toString();
    }

    void compare(const std::string &input) {
        SCOPED_TRACE(input);
        QCoreApplication::sendPostedEvents(); // the status strip follows when the handler has ended
        auto &calls = recorder.calls;
        auto &reports = recorder.reports;
        calls.erase(std::remove(calls.begin(), calls.end(), kTransfer), calls.end());
        reports.erase(std::remove(reports.begin(), reports.end(), kBatteryRequest), reports.end());
        EXPECT_EQ(std::exchange(calls, {}), std::exchange(model_->calls, {}));
        EXPECT_EQ(std::exchange(reports, {}), std::exchange(model_->reports, {}));
        EXPECT_TRUE(same(recorder.system, model_->sentSystem));
        EXPECT_TRUE(same(recorder.sound, model_->sentSound));
        EXPECT_TRUE(same(recorder.extension, model_->sentExtension));
        EXPECT_EQ(ProductSettings::readDword(L"vol_locked"), model_->world.locked);
        QFile file(curveFile());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), QByteArray(reinterpret_cast<const char *>(&model_->world.curveFile), 748));
        for (const auto &[place, value] : PanelShown(*model_).lines) {
            const QStringList parts = QString::fromStdString(place).split('.');
            EXPECT_EQ(actual(parts[0], parts[1], QString::fromStdString(value)).toStdString(), value)
                << place;
        }
        expectCheckedIsShown();
    }

    // Screen readers hear "checked" for what the eye sees as chosen, on or muted.
    void expectCheckedIsShown() {
        const QRegularExpression mark("btn_open.png|1px solid #ef0303|rgba\\(110,110,110,1\\)|"
                                      "silent-volumeHigh.png|icon_lock.png");
        int checkable = 0;
        for (const QPushButton *button : window->findChildren<QPushButton *>()) {
            if (!button->isCheckable())
                continue;
            ++checkable;
            const QString name = button->objectName();
            bool isOn = button->styleSheet().contains(mark);
            if (name.startsWith("bt_y"))
                isOn = name == QString("bt_y%1").arg(model_->page);
            else if (name == "btn_uninstall_mic") // one setting with pushButton_16
                isOn = model_->system.head.monitoringOn;
            EXPECT_EQ(button->isChecked(), isOn) << name.toStdString();
        }
        EXPECT_GT(checkable, 45);
    }

    // The drawing turns in the right direction, or stands still.
    void expectTurning() {
        const auto &view = *window->findChild<SoundFieldView *>();
        const float before = view.angle();
        const bool moved =
            QTest::qWaitFor([&] { return view.angle() != before; }, model_->turning() ? 5000 : 150);
        EXPECT_EQ(moved ? view.angle() - before : 0, model_->turning());
    }

    void play(int inputs) {
        std::string control;
        for (int i = 0; i < inputs && !HasFailure(); ++i) {
            if (i == 0 || dice(4) > 0) // else the same once more
                control = any(inputs_);
            int value = 0;
            if (!choose(control, value))
                continue;
            model_->box.clear();
            ASSERT_TRUE(model_->take(control, value, curveName_)) << "unknown: " << control;
            std::optional<BoxAnswerer> answerer;
            if (!model_->box.empty())
                answerer.emplace(0);
            give(control, value);
            EXPECT_EQ(answerer ? answerer->box().text : L"",
                      std::wstring(model_->box.begin(), model_->box.end()));
            compare("input " + std::to_string(i) + ": " + control + " " + std::to_string(value));
            if ((control == "Page4_P_4" || control == "Page4_P_5") && model_->sound.soundFieldOn) {
                EXPECT_EQ(window->findChild<SoundFieldView *>()->angle(), 0);
            }
        }
    }

    // A box that the model does not know would wait for ever.
    PanelSession() {
        watchdog_.callOnTimeout([this] {
            const HWND box = model_->box.empty() ? findBox() : nullptr;
            if (box) {
                ADD_FAILURE() << "unexpected message box";
                PostMessageW(box, WM_CLOSE, 0, 0);
            }
        });
        watchdog_.start(1000);
    }

    QTimer watchdog_;
    std::mt19937 random_{20261123};
    std::optional<PanelModel> model_;
    QHash<QString, QWidget *> widgets_;
    std::vector<std::string> inputs_;
    std::u16string curveName_;
};

} // namespace

// Handles, widgets, memory: what was used keeps nothing. The first uses fill caches. Before the sessions,
// whose freed memory would take up what is lost.
TEST_F(PanelSession, KeepsNothingOfWhatWasUsed) {
    PanelWorld world = anyWorld();
    world.device.sound.equalizerOn = 1;
    world.curveFile.count = 10; // an eleventh is refused
    start(world);
    const auto useEach = [this](int times) {
        for (const char *control : {"dialogs", "language", "battery", "verticalSlider_12", "pushButton_25",
                                    "pushButton_33", "page4_L", "bt_y3", "pushButton_36"}) {
            inputs_ = {control};
            play(times);
        }
    };
    useEach(20);
    const int widgets = QApplication::allWidgets().size(), handles = openHandles();
    const size_t kilobytes = privateKilobytes();
    useEach(40);
    EXPECT_LE(QApplication::allWidgets().size(), widgets);
    EXPECT_LE(privateKilobytes(), kilobytes + 128);
    EXPECT_TRUE(waitUntil([&] { return openHandles() <= handles + 5; })) << "threads of the system aside";
}

TEST_F(PanelSession, ShowsStoresAndSendsWhatTheModelSays) {
    for (int session = 0; session < 8 && !HasFailure(); ++session) {
        SCOPED_TRACE("session " + std::to_string(session));
        start(anyWorld());
        play(75);
        expectTurning();
        play(75);
        restart();
        play(50);
    }
}

TEST_F(PanelSession, OnlyALeftPressOnTheTopBarDragsTheWindow) {
    start({});
    for (const auto &[button, y, drags] :
         {std::tuple{Qt::LeftButton, 68, true}, {Qt::LeftButton, 69, false}, {Qt::RightButton, 30, false}}) {
        const QPoint press(400, y), before = window->pos();
        for (const auto &[type, by] : {std::pair{QEvent::MouseButtonPress, QPoint(0, 0)},
                                       {QEvent::MouseMove, {50, -40}},
                                       {QEvent::MouseButtonRelease, {0, 0}},
                                       {QEvent::MouseMove, {7, 7}}}) {
            QMouseEvent event(type, press + by, window->mapToGlobal(press + by), button, button, {});
            QCoreApplication::sendEvent(window.get(), &event);
        }
        EXPECT_EQ(window->pos() - before, drags ? QPoint(50, -40) : QPoint()) << y;
    }
}
