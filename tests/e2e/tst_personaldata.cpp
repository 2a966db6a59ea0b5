#include "HudRecorder.h"
#include "InProcessStore.h"
#include "QuickTestItems.h"
#include "ScriptedHttpServer.h"
#include "TestEnvironment.h"
#include "tst_account_support.h"
#include "tst_signin_support.h"

#include "app/AppDelegate.h"
#include "device/ICCameraDevice.h"
#include "device/ICImagePickerController.h"
#include "device/ICMediaPhotoHelper.h"
#include "device/ICSquareCropper.h"
#include "platform/ui/AlertCenter.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/MemoryImageProvider.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "platform/ui/Window.h"
#include "screens/account/PersonalDataBottomView.h"
#include "screens/account/PersonalDataViewController.h"
#include "service/ICCookiesHelper.h"
#include "service/ICSessionHelper.h"
#include "util/AppConfig.h"

#include <QImage>
#include <QCameraDevice>
#include <QImageCapture>
#include <QImageReader>
#include <QMediaDevices>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPainter>
#include <QQmlExtensionPlugin>
#include <QTemporaryDir>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using platform::AlertCenter;
using platform::Hud;
using platform::NavigationController;
using namespace tarvel::test;

namespace {

const QString Password = QStringLiteral("secret123");
const QColor Red(220, 30, 30);
const QColor Green(30, 200, 60);
const QColor Blue(30, 60, 220);

QList<HudRecorder::Record> hudRecords()
{
    return HudRecorder::shared().records();
}

// Three bands, red, green and blue, across (vertical bands) or down (horizontal bands) the
// picture; `firstEnd` and `secondEnd` are where the first two end.
QImage bands(const QSize &size, bool across, int firstEnd, int secondEnd)
{
    QImage image(size, QImage::Format_RGB32);
    QPainter painter(&image);
    const int length = across ? size.width() : size.height();
    const QList<std::pair<int, QColor>> parts{{0, Red}, {firstEnd, Green}, {secondEnd, Blue}};
    for (qsizetype i = 0; i < parts.size(); ++i) {
        const int from = parts.at(i).first;
        const int to = i + 1 < parts.size() ? parts.at(i + 1).first : length;
        const QRect rect = across ? QRect(from, 0, to - from, size.height())
                                  : QRect(0, from, size.width(), to - from);
        painter.fillRect(rect, parts.at(i).second);
    }
    return image;
}

bool near(const QColor &a, const QColor &b)
{
    return std::abs(a.red() - b.red()) < 40 && std::abs(a.green() - b.green()) < 40
           && std::abs(a.blue() - b.blue()) < 40;
}

QByteArray infoAnswer(const QByteArray &avatar, const QByteArray &gender)
{
    QByteArray data
            = "{\"account_id\":9,\"nick_name\":\"小明\",\"avatar\":\"" + avatar
              + "\",\"qiniu_params\":{\"token\":\"tk\",\"x:account_id\":\"9\",\"x:timestamp\":"
                "\"1714550400\",\"x:tarvel_token\":\"tt\",\"x:bucket_name\":\"tarvel-avatars\"}";
    if (!gender.isEmpty())
        data += ",\"gender\":" + gender;
    return "{\"status\":\"success\",\"message\":\"\",\"data\":" + data + "}}";
}

} // namespace

// The personal-data screen and the picture helper: what the user information shows, the gender
// form, pictures of every shape reaching the screen as 320 x 320 squares, the permission and
// camera paths, the silent ends of picking, and saving against tarvel-store (or a scripted
// server where an upload has to fail).
class TestPersonalData : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;
    std::unique_ptr<platform::Window> m_window;
    NavigationController *m_stack = nullptr;
    QTemporaryDir m_pictures;

    // The picker's QML makes the engine collect garbage; the window's view must not be part of it.
    static void keepAlive(PhoneWindow &phone) { phone.root()->setParent(phone.window()); }

    void useService(const QString &baseUrl) { qputenv("TARVEL_API_BASE_URL", baseUrl.toUtf8()); }

    // The screen pushed over a root that stands for the my page.
    PersonalDataViewController *pushScreen()
    {
        m_window = std::make_unique<platform::Window>();
        m_stack = new NavigationController(new platform::ViewController);
        m_window->setRootViewController(m_stack);
        m_window->makeKeyAndVisible();
        auto *screen = new PersonalDataViewController;
        m_stack->pushViewController(screen, false);
        return screen;
    }

    // The same, once its user information has loaded; the HUD history starts after that unless
    // it is kept.
    PersonalDataViewController *openScreen(bool keepHistory = false)
    {
        PersonalDataViewController *screen = pushScreen();
        if (!QTest::qWaitFor([] { return hudRecords().size() >= 1 && !Hud::shared().isVisible(); },
                             10000))
            return nullptr;
        settle();
        if (!keepHistory)
            HudRecorder::shared().clear();
        return screen;
    }

    QUrl pictureFile(const QImage &image, const QString &name)
    {
        const QString path = m_pictures.filePath(name);
        return image.save(path) ? QUrl::fromLocalFile(path) : QUrl();
    }

    // "编辑头像", then one button of its sheet.
    static bool chooseFromSheet(PersonalDataViewController *screen, int index)
    {
        if (!screen->buttonEditHead()->tap())
            return false;
        AlertCenter &alerts = AlertCenter::shared();
        return alerts.isActive() && alerts.style() == AlertCenter::ActionSheet
               && alerts.choose(index);
    }

    static ICImagePickerController *picker()
    {
        return ICMediaPhotoHelper::shareInstance()->ICImagePicker();
    }

    // Picks `file` from the photo library on `screen`, in the crop sheet.
    bool pickFile(PersonalDataViewController *screen, const QUrl &file)
    {
        if (!chooseFromSheet(screen, 1) || !picker() || m_window->presentedCount() != 1)
            return false;
        return picker()->didChooseFile(file)
               && picker()->stage() == ICImagePickerController::Editing;
    }

    void signInFresh(const QString &phone)
    {
        createAccount(*m_store, phone, QString(), Password, QStringLiteral("资料测试"));
        QVERIFY(signIn(phone, Password));
        HudRecorder::shared().clear();
    }

private slots:
    void initTestCase()
    {
        QmlWarnings::install();
        QVERIFY(m_pictures.isValid());
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
        m_store = std::make_unique<InProcessStore>();
        QVERIFY(m_store->isRunning());
        AppDelegate::shared();
    }

    void init()
    {
        useService(m_store->baseUrl());
        ICCookiesHelper::deleteCookies();
        ICSessionHelper::userClearData();
        AppDelegate::shared()->setUserLogin(std::nullopt);
        ICMediaPhotoHelper::shareInstance()->setAuthorizationStatus(ICMediaPhotoHelper::Authorized);
        AlertCenter::shared().clear();
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
        QmlWarnings::clear();
    }

    void cleanup()
    {
        m_window.reset();
        AlertCenter::shared().clear();
        settle();
    }

    void showsTheUserInformation_data()
    {
        QTest::addColumn<QByteArray>("avatar");
        QTest::addColumn<QByteArray>("gender");
        QTest::addColumn<QString>("shownAvatar");
        QTest::addColumn<QString>("selected");
        QTest::newRow("relative avatar, female")
                << QByteArray("/uploads/a1.jpg") << QByteArray("1") << "/uploads/a1.jpg"
                << "buttonWoman";
        QTest::newRow("absolute avatar, not stated")
                << QByteArray("http://cdn.example.test/a.png") << QByteArray("2")
                << "http://cdn.example.test/a.png"
                << "buttonNone";
        QTest::newRow("no gender reads as male") << QByteArray("/pictures/avatars/default.png")
                                                 << QByteArray() << "/pictures/avatars/default.png"
                                                 << "buttonMale";
        QTest::newRow("unknown gender selects none")
                << QByteArray("/a.png") << QByteArray("7") << "/a.png"
                << "";
    }

    void showsTheUserInformation()
    {
        QFETCH(QByteArray, avatar);
        QFETCH(QByteArray, gender);
        QFETCH(QString, shownAvatar);
        QFETCH(QString, selected);
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        useService(server.baseUrl());
        server.enqueue(ScriptedResponse::json(infoAnswer(avatar, gender)));
        PersonalDataViewController *screen = openScreen(true);
        QVERIFY(screen);
        QCOMPARE(server.lastRequest().path, QStringLiteral("/setting/info.json"));
        QCOMPARE(screen->title(), QStringLiteral("个人资料"));
        QCOMPARE(screen->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QCOMPARE(screen->backgroundImage(), QStringLiteral("myInfo_bg"));
        QCOMPARE(hudRecords(), QList<HudRecorder::Record>{hudProgress(QStringLiteral("正在加载"))});

        const QString expected = shownAvatar.startsWith(QLatin1String("http"))
                                         ? shownAvatar
                                         : server.baseUrl() + shownAvatar;
        QCOMPARE(screen->imageHead(), QUrl(expected));
        QCOMPARE(screen->strAvatar(), QString::fromUtf8(avatar));
        PersonalDataBottomView *form = screen->bottomView();
        QCOMPARE(form->fieldName()->text(), QStringLiteral("小明"));
        QCOMPARE(form->buttonMale()->isSelected(), selected == QLatin1String("buttonMale"));
        QCOMPARE(form->buttonWoman()->isSelected(), selected == QLatin1String("buttonWoman"));
        QCOMPARE(form->buttonNone()->isSelected(), selected == QLatin1String("buttonNone"));
        QCOMPARE(screen->modelQiNiu().account_id, QStringLiteral("9"));
        QCOMPARE(screen->modelQiNiu().bucket_name, QStringLiteral("tarvel-avatars"));
        QVERIFY(screen->imageHeaderUpload().isNull());
    }

    void userInformationFailureIsShown()
    {
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        useService(server.baseUrl());
        server.enqueue(ScriptedResponse::json(
                "{\"status\":\"error\",\"data\":null,\"message\":\"请先登录\"}", 401));
        PersonalDataViewController *screen = pushScreen();
        QTRY_COMPARE(hudRecords(),
                     (QList<HudRecorder::Record>{hudProgress(QStringLiteral("正在加载")),
                                                 hudError(QStringLiteral("请先登录"))}));
        QVERIFY(screen->strAvatar().isEmpty());
        QVERIFY(screen->imageHead().isEmpty());
    }

    void formReportsTheGender_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("tapped");
        QTest::addColumn<QString>("reported");
        QTest::newRow("male") << 0 << ""
                              << "0";
        QTest::newRow("female") << 1 << ""
                                << "1";
        QTest::newRow("not stated") << 2 << ""
                                    << "2";
        QTest::newRow("none selected") << -1 << ""
                                       << "0";
        QTest::newRow("none, then female") << 9 << "woman"
                                           << "1";
        QTest::newRow("female, then not stated") << 1 << "none"
                                                 << "2";
        QTest::newRow("not stated, then male") << 2 << "male"
                                               << "0";
    }

    void formReportsTheGender()
    {
        QFETCH(int, code);
        QFETCH(QString, tapped);
        QFETCH(QString, reported);
        PersonalDataBottomView form;
        form.setViewContentWithName(QStringLiteral("小红"), code);
        QCOMPARE(form.getUserName(), QStringLiteral("小红"));
        if (tapped == QLatin1String("woman"))
            QVERIFY(form.buttonWoman()->tap());
        else if (tapped == QLatin1String("none"))
            QVERIFY(form.buttonNone()->tap());
        else if (tapped == QLatin1String("male"))
            QVERIFY(form.buttonMale()->tap());
        QCOMPARE(form.getUserSex(), reported);
        const int selectedCount = int(form.buttonMale()->isSelected())
                                  + int(form.buttonWoman()->isSelected())
                                  + int(form.buttonNone()->isSelected());
        QCOMPARE(selectedCount, (code < 0 || code > 2) && tapped.isEmpty() ? 0 : 1);
    }

    void saveReachesOnlyADelegateThatAnswers()
    {
        PersonalDataBottomView form;
        QVERIFY(form.buttonSave()->tap()); // no delegate: nothing happens
        QObject mute;
        form.setDelegate(&mute);
        QVERIFY(form.buttonSave()->tap()); // no such method: nothing happens
        QVERIFY(hudRecords().isEmpty());
        PersonalDataViewController listener;
        form.setDelegate(&listener);
        QVERIFY(form.buttonSave()->tap());
        // The screen's save asks the service at once, with its progress text (signed out here,
        // so the service refuses).
        QCOMPARE(hudRecords(),
                 QList<HudRecorder::Record>{hudProgress(QStringLiteral("正在修改..."))});
        QTRY_COMPARE_WITH_TIMEOUT(hudRecords().size(), 2, 10000);
        QCOMPARE(hudRecords().constLast().kind, Hud::Error);
    }

    void anyPictureBecomesA320Square_data()
    {
        QTest::addColumn<QImage>("picture");
        QTest::addColumn<QPointF>("drag");
        QTest::addColumn<qreal>("zoom");
        QTest::addColumn<QColor>("corner");
        QTest::addColumn<QColor>("centre");
        QTest::newRow("tall") << bands(QSize(300, 900), false, 400, 500) << QPointF() << 1.0 << Red
                              << Green;
        QTest::newRow("tall, dragged down to its top")
                << bands(QSize(300, 900), false, 400, 500) << QPointF(0, 2000) << 1.0 << Red << Red;
        QTest::newRow("wide") << bands(QSize(1200, 400), true, 500, 700) << QPointF() << 1.0 << Red
                              << Green;
        QTest::newRow("wide, dragged left to its end") << bands(QSize(1200, 400), true, 500, 700)
                                                       << QPointF(-5000, 0) << 1.0 << Blue << Blue;
        QTest::newRow("wide, zoomed in")
                << bands(QSize(1200, 400), true, 500, 700) << QPointF() << 4.0 << Green << Green;
        QTest::newRow("tiny") << bands(QSize(40, 30), true, 0, 40) << QPointF() << 1.0 << Green
                              << Green;
        QTest::newRow("large") << bands(QSize(6000, 4000), true, 2500, 3500) << QPointF() << 1.0
                               << Red << Green;
    }

    void anyPictureBecomesA320Square()
    {
        QFETCH(QImage, picture);
        QFETCH(QPointF, drag);
        QFETCH(qreal, zoom);
        QFETCH(QColor, corner);
        QFETCH(QColor, centre);
        static int accounts = 0;
        signInFresh(QStringLiteral("1350000%1").arg(1000 + ++accounts));
        PersonalDataViewController *screen = openScreen();
        QVERIFY(screen);
        const QUrl file = pictureFile(picture, QStringLiteral("picture.png"));
        QVERIFY(pickFile(screen, file));
        ICSquareCropper *cropper = picker()->cropper();
        cropper->setZoom(zoom);
        cropper->moveBy(drag.x(), drag.y());
        picker()->usePhoto();

        const QImage chosen = screen->imageHeaderUpload();
        QCOMPARE(chosen.size(), QSize(320, 320));
        QVERIFY2(near(chosen.pixelColor(4, 4), corner), qPrintable(chosen.pixelColor(4, 4).name()));
        QVERIFY2(near(chosen.pixelColor(160, 160), centre),
                 qPrintable(chosen.pixelColor(160, 160).name()));
        // The round head shows it at once.
        QCOMPARE(platform::MemoryImageProvider::image(screen->imageHead()), chosen);
        QTRY_COMPARE(m_window->presentedCount(), 0);
        QVERIFY(!picker());
        QVERIFY(hudRecords().isEmpty());
    }

    void deniedPermissionAlerts_data()
    {
        QTest::addColumn<int>("status");
        QTest::newRow("denied") << int(ICMediaPhotoHelper::Denied);
        QTest::newRow("restricted") << int(ICMediaPhotoHelper::Restricted);
    }

    void deniedPermissionAlerts()
    {
        QFETCH(int, status);
        ICMediaPhotoHelper::shareInstance()->setAuthorizationStatus(
                ICMediaPhotoHelper::AuthorizationStatus(status));
        signInFresh(QStringLiteral("1350001%1").arg(1000 + status));
        PersonalDataViewController *screen = openScreen();
        QVERIFY(screen);
        QVERIFY(chooseFromSheet(screen, 1));
        AlertCenter &alerts = AlertCenter::shared();
        QVERIFY(alerts.isActive());
        QCOMPARE(alerts.style(), AlertCenter::Alert);
        QCOMPARE(alerts.title(), QStringLiteral("Grant photos permission"));
        QCOMPARE(
                alerts.message(),
                QStringLiteral(
                        "Grant permission to your photos. Go to Settings App > Privacy > Photos."));
        QCOMPARE(alerts.buttonTitles(), QStringList{QStringLiteral("Confirm")});
        QCOMPARE(m_window->presentedCount(), 0);
        QVERIFY(alerts.choose(0));
        QCOMPARE(m_window->presentedCount(), 0);
        QVERIFY(screen->imageHeaderUpload().isNull());
    }

    void undecidedPermissionAsksOnce_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<int>("becomes");
        QTest::addColumn<int>("presented");
        QTest::newRow("allowed") << 1 << int(ICMediaPhotoHelper::Authorized) << 1;
        QTest::newRow("refused") << 0 << int(ICMediaPhotoHelper::Denied) << 0;
    }

    void undecidedPermissionAsksOnce()
    {
        QFETCH(int, answer);
        QFETCH(int, becomes);
        QFETCH(int, presented);
        ICMediaPhotoHelper *helper = ICMediaPhotoHelper::shareInstance();
        helper->setAuthorizationStatus(ICMediaPhotoHelper::NotDetermined);
        signInFresh(QStringLiteral("1350002%1").arg(1000 + answer));
        PersonalDataViewController *screen = openScreen();
        QVERIFY(screen);
        QVERIFY(chooseFromSheet(screen, 1));
        QVERIFY(AlertCenter::shared().isActive());
        QCOMPARE(m_window->presentedCount(), 0);
        QVERIFY(AlertCenter::shared().choose(answer));
        QCOMPARE(int(helper->authorizationStatus()), becomes);
        QCOMPARE(m_window->presentedCount(), presented);
        // Decided now: the next request asks no more.
        if (presented) {
            picker()->cancel();
            QTRY_COMPARE(m_window->presentedCount(), 0);
            QVERIFY(chooseFromSheet(screen, 1));
            QVERIFY(!AlertCenter::shared().isActive());
            QCOMPARE(m_window->presentedCount(), 1);
        }
    }

    // The app reaches the camera without linking Qt Multimedia: what it finds must be what Qt
    // Multimedia says, and a capture hands over its one picture once.
    void cameraThroughQtMultimedia()
    {
        QCOMPARE(ICCameraDevice::isAvailable(), !QMediaDevices::defaultVideoInput().isNull());

        QObject notACapture;
        QVERIFY(!ICCameraDevice::captureOnce(&notACapture, this, [](const QImage &) {}));

        QImageCapture capture;
        QList<QSize> pictures;
        ICCameraDevice::captureOnce(&capture, this,
                                    [&pictures](const QImage &image) { pictures << image.size(); });
        QImage taken(64, 48, QImage::Format_RGB32);
        taken.fill(Qt::red);
        emit capture.imageCaptured(1, taken);
        emit capture.imageCaptured(2, QImage(8, 8, QImage::Format_RGB32));
        QCOMPARE(pictures, QList<QSize>{QSize(64, 48)});
    }

    void cameraWithoutDevicePresentsNothing()
    {
        if (ICCameraDevice::isAvailable())
            QSKIP("this machine has a camera");
        signInFresh(QStringLiteral("13500030001"));
        PersonalDataViewController *screen = openScreen();
        QVERIFY(screen);
        QVERIFY(screen->buttonEditHead()->tap());
        AlertCenter &alerts = AlertCenter::shared();
        QCOMPARE(alerts.title(), QStringLiteral("选择照片"));
        QCOMPARE(alerts.buttonTitles(),
                 (QStringList{QStringLiteral("相机拍照获取"), QStringLiteral("相册获取"),
                              QStringLiteral("取消")}));
        QCOMPARE(alerts.destructiveButtonIndex(), 0);
        QCOMPARE(alerts.cancelButtonIndex(), 2);
        QVERIFY(alerts.choose(0));
        QVERIFY(!alerts.isActive());
        QCOMPARE(m_window->presentedCount(), 0);
        QVERIFY(!picker());
        QVERIFY(hudRecords().isEmpty());

        // The sheet's cancel does nothing either.
        QVERIFY(chooseFromSheet(screen, 2));
        QCOMPARE(m_window->presentedCount(), 0);
    }

    void cancelAndPickerFailureEndSilently_data()
    {
        QTest::addColumn<bool>("cancel");
        QTest::addColumn<QString>("domain");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("reason");
        QTest::newRow("cancel") << true << "关闭" << 0 << "关闭";
        QTest::newRow("unsupported source") << false << "读取照片错误" << 400 << "无法获取图片";
    }

    void cancelAndPickerFailureEndSilently()
    {
        QFETCH(bool, cancel);
        QFETCH(QString, domain);
        QFETCH(int, code);
        QFETCH(QString, reason);
        signInFresh(QStringLiteral("1350004%1").arg(1000 + int(cancel)));
        PersonalDataViewController *screen = openScreen();
        QVERIFY(screen);
        const QUrl before = screen->imageHead();

        // On the screen: nothing at all.
        QVERIFY(chooseFromSheet(screen, 1));
        QVERIFY(picker());
        if (cancel) {
            picker()->cancel();
        } else {
            picker()->setSourceType(ICImagePickerController::SourceTypeSavedPhotosAlbum);
            QVERIFY(picker()->didChooseFile(
                    pictureFile(bands(QSize(64, 64), true, 20, 40), QStringLiteral("small.png"))));
            picker()->usePhoto();
        }
        QTRY_COMPARE(m_window->presentedCount(), 0);
        QVERIFY(hudRecords().isEmpty());
        QVERIFY(!AlertCenter::shared().isActive());
        QVERIFY(screen->imageHeaderUpload().isNull());
        QCOMPARE(screen->imageHead(), before);

        // What the helper hands to its failure block.
        QList<ICMediaError> errors;
        int pictures = 0;
        ICMediaPhotoHelper *helper = ICMediaPhotoHelper::shareInstance();
        helper->getPhotoByICLibry(
                screen, ICMediaPhotoHelper::PhotoLibrary, [&](const QImage &) { ++pictures; },
                [&](const ICMediaError &error) { errors.append(error); });
        QVERIFY(picker());
        if (cancel) {
            picker()->cancel();
        } else {
            picker()->setSourceType(ICImagePickerController::SourceTypeSavedPhotosAlbum);
            QVERIFY(picker()->didChooseFile(
                    pictureFile(bands(QSize(64, 64), true, 20, 40), QStringLiteral("small.png"))));
            picker()->usePhoto();
        }
        const ICMediaError expected{domain, code, {{QStringLiteral("error_msg"), reason}}};
        QCOMPARE(errors.size(), 1);
        QVERIFY(errors.first() == expected);
        QCOMPARE(pictures, 0);
    }

    void unreadableFileKeepsTheChooser()
    {
        signInFresh(QStringLiteral("13500050001"));
        PersonalDataViewController *screen = openScreen();
        QVERIFY(screen);
        QVERIFY(chooseFromSheet(screen, 1));
        const QString path = m_pictures.filePath(QStringLiteral("broken.png"));
        QFile broken(path);
        QVERIFY(broken.open(QIODevice::WriteOnly));
        broken.write("not a picture");
        broken.close();
        QVERIFY(!picker()->didChooseFile(QUrl::fromLocalFile(path)));
        QCOMPARE(picker()->stage(), ICImagePickerController::Choosing);
        QCOMPARE(AlertCenter::shared().title(), QStringLiteral("无法打开这张图片"));
        QCOMPARE(m_window->presentedCount(), 1);
    }

    void uploadFailuresAreShown_data()
    {
        QTest::addColumn<ScriptedResponse>("uploadAnswer");
        QTest::addColumn<QStringList>("errors");
        QTest::newRow("transport failure")
                << ScriptedResponse::closeMidBody("{\"dest_url\":\"http://x/y.jpg\"}")
                << QStringList{QStringLiteral("上传失败"),
                               QStringLiteral("网络错误，请检查网络情况")};
        QTest::newRow("answer without dest_url") << ScriptedResponse::json("{\"key\":\"y.jpg\"}")
                                                 << QStringList{QStringLiteral("上传失败")};
        QTest::newRow("answer not JSON") << ScriptedResponse::text("<html>busy</html>", "text/html")
                                         << QStringList{QStringLiteral("上传失败")};
    }

    void uploadFailuresAreShown()
    {
        QFETCH(ScriptedResponse, uploadAnswer);
        QFETCH(QStringList, errors);
        ScriptedHttpServer server;
        QVERIFY(server.listen());
        useService(server.baseUrl());
        server.enqueue(ScriptedResponse::json(infoAnswer("/a.png", "1")));
        server.enqueue(uploadAnswer);
        PersonalDataViewController *screen = openScreen();
        QVERIFY(screen);
        QVERIFY(pickFile(screen, pictureFile(bands(QSize(500, 300), true, 100, 200),
                                             QStringLiteral("up.png"))));
        picker()->usePhoto();
        QTRY_COMPARE(m_window->presentedCount(), 0);
        HudRecorder::shared().clear();

        QVERIFY(screen->bottomView()->buttonSave()->tap());
        QVERIFY(server.waitForRequests(2, 10000));
        QTRY_COMPARE(hudRecords().size(), 1 + errors.size());
        QList<HudRecorder::Record> expected{hudProgress(QStringLiteral("正在修改..."))};
        for (const QString &error : errors)
            expected.append(hudError(error));
        QCOMPARE(hudRecords(), expected);
        QCOMPARE(Hud::shared().text(), errors.constLast());
        const RecordedRequest upload = server.lastRequest();
        QCOMPARE(upload.path, QStringLiteral("/sandbox/qiniu/upload"));
        // The profile is not asked to change, and the screen stays with its picture.
        QCOMPARE(server.requestCount(), 2);
        QCOMPARE(m_stack->depth(), 2);
        QCOMPARE(screen->imageHeaderUpload().size(), QSize(320, 320));
    }

    void saveWithoutPictureChangesTheNickname()
    {
        signInFresh(QStringLiteral("13500060001"));
        const QString avatarBefore = AppDelegate::shared()->userLogin()->avatar;
        PersonalDataViewController *screen = openScreen();
        QVERIFY(screen);
        HudRecorder::shared().clear();
        screen->bottomView()->fieldName()->setText(QStringLiteral("新名字"));
        QVERIFY(screen->bottomView()->buttonWoman()->tap());
        QVERIFY(screen->bottomView()->buttonSave()->tap());
        QTRY_COMPARE(hudRecords().size(), 2);
        QCOMPARE(hudRecords(),
                 (QList<HudRecorder::Record>{hudProgress(QStringLiteral("正在修改...")),
                                             hudSuccess(QStringLiteral("修改成功"))}));
        QTRY_COMPARE(m_stack->depth(), 1);
        QCOMPARE(AppDelegate::shared()->userLogin()->nick_name, QStringLiteral("新名字"));
        QCOMPARE(AppDelegate::shared()->userLogin()->avatar, avatarBefore);
        const QVariantMap stored = ICSessionHelper::userGetinfo().value_or(QVariantMap());
        QCOMPARE(stored.value(QStringLiteral("nick_name")).toString(), QStringLiteral("新名字"));
        QCOMPARE(stored.value(QStringLiteral("avatar")).toString(), avatarBefore);

        // The service keeps the gender too.
        PersonalDataViewController *again = openScreen();
        QVERIFY(again);
        QVERIFY(again->bottomView()->buttonWoman()->isSelected());
        QCOMPARE(again->bottomView()->fieldName()->text(), QStringLiteral("新名字"));
    }

    void saveWithPictureUploadsItFirst()
    {
        signInFresh(QStringLiteral("13500070001"));
        PersonalDataViewController *screen = openScreen();
        QVERIFY(screen);
        QVERIFY(pickFile(screen, pictureFile(bands(QSize(900, 600), true, 300, 600),
                                             QStringLiteral("face.png"))));
        picker()->usePhoto();
        QTRY_COMPARE(m_window->presentedCount(), 0);
        HudRecorder::shared().clear();
        screen->bottomView()->fieldName()->setText(QStringLiteral("有头像"));
        QVERIFY(screen->bottomView()->buttonSave()->tap());
        QTRY_COMPARE_WITH_TIMEOUT(m_stack->depth(), 1, 10000);
        QCOMPARE(hudRecords(),
                 (QList<HudRecorder::Record>{hudProgress(QStringLiteral("正在修改...")),
                                             hudSuccess(QStringLiteral("修改成功"))}));

        const Object_User user = *AppDelegate::shared()->userLogin();
        QCOMPARE(user.nick_name, QStringLiteral("有头像"));
        QVERIFY2(user.avatar.startsWith(m_store->baseUrl() + QStringLiteral("/uploads/")),
                 qPrintable(user.avatar));
        const QVariantMap stored = ICSessionHelper::userGetinfo().value_or(QVariantMap());
        QCOMPARE(stored.value(QStringLiteral("avatar")).toString(), user.avatar);
        QCOMPARE(stored.value(QStringLiteral("nick_name")).toString(), QStringLiteral("有头像"));

        // The store serves the stored picture, resized by the image-service suffix.
        QNetworkAccessManager network;
        QNetworkReply *reply = network.get(
                QNetworkRequest(QUrl(user.avatar + QStringLiteral("?imageView2/2/w/100/q/85"))));
        QTRY_VERIFY_WITH_TIMEOUT(reply->isFinished(), 10000);
        QCOMPARE(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 200);
        const QImage served = QImage::fromData(reply->readAll());
        QCOMPARE(served.size(), QSize(100, 100));
        delete reply;

        // Reopened, the screen shows the new avatar.
        PersonalDataViewController *reopened = openScreen();
        QVERIFY(reopened);
        QCOMPARE(reopened->imageHead(), QUrl(user.avatar));
    }

    void viewsLookFinished()
    {
        signInFresh(QStringLiteral("13500080001"));
        PersonalDataViewController *screen = openScreen();
        QVERIFY(screen);
        PhoneWindow phone;
        QVERIFY(phone.show(m_window.get()));
        keepAlive(phone);
        QTRY_VERIFY(phone.findText(QStringLiteral("个人资料")));
        QVERIFY(phone.findText(QStringLiteral("编辑头像")));
        QVERIFY(phone.findText(QStringLiteral("保密")));
        QQuickItem *head = phone.findItem(QStringLiteral("imageHead"));
        QVERIFY(head);
        QTRY_VERIFY_WITH_TIMEOUT(head->property("ready").toBool(), 10000);
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("personaldata.png")));

        // The sheet, and the library through it.
        QVERIFY(tapWhenStill(phone.window(), phone.findItem(QStringLiteral("buttonEditHead"))));
        QTRY_VERIFY(phone.findText(QStringLiteral("相册获取")));
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("personaldata-sheet.png")));
        QVERIFY(tapWhenStill(phone.window(), phone.findText(QStringLiteral("相册获取"))));
        QTRY_VERIFY(picker());
        QVERIFY(tarvel::test::waitForStillScene(phone.window())); // the sheet and the chooser
        QVERIFY(phone.screenshot(QStringLiteral("picker-chooser.png")));
        QImage picture(1200, 800, QImage::Format_RGB32);
        picture.fill(QColor(40, 120, 200));
        QPainter(&picture).fillRect(QRect(450, 250, 300, 300), QColor(250, 200, 40));
        QVERIFY(picker()->didChooseFile(pictureFile(picture, QStringLiteral("view.png"))));

        // The crop sheet moves the picture with the finger.
        // Once the sheet has slid in.
        QPointF centre;
        QTRY_VERIFY([&] {
            QQuickItem *frame = phone.findItem(QStringLiteral("cropFrame"));
            if (!frame)
                return false;
            const QPointF now = frame->mapToScene(QPointF(frame->width() / 2, frame->height() / 2));
            const bool still = now == centre && now.y() < phone.window()->height();
            centre = now;
            return still;
        }());
        const qreal before = picker()->cropper()->imageX();
        QTest::mousePress(phone.window(), Qt::LeftButton, {}, centre.toPoint());
        for (int step = 1; step <= 5; ++step)
            QTest::mouseMove(phone.window(), (centre + QPointF(10 * step, 0)).toPoint());
        QTest::mouseRelease(phone.window(), Qt::LeftButton, {},
                            (centre + QPointF(50, 0)).toPoint());
        QVERIFY(picker()->cropper()->imageX() > before);
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("cropsheet.png")));

        QVERIFY(tapWhenStill(phone.window(), phone.findItem(QStringLiteral("useButton"))));
        QTRY_COMPARE(m_window->presentedCount(), 0);
        QCOMPARE(screen->imageHeaderUpload().size(), QSize(320, 320));
        QTRY_VERIFY(!phone.findItem(QStringLiteral("cropFrame")));
        QCOMPARE(screen->imageHead().scheme(), QStringLiteral("image"));
        QTRY_VERIFY(head->property("ready").toBool());
        QVERIFY(phone.waitForFrame());
        QVERIFY(phone.screenshot(QStringLiteral("personaldata-chosen.png")));
        QVERIFY2(QmlWarnings::messages().isEmpty(), qPrintable(QmlWarnings::text()));
    }
};

TARVEL_TEST_MAIN(TestPersonalData)
#include "tst_personaldata.moc"
