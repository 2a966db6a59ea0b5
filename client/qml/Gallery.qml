import QtQuick
import QtQuick.Controls
import Tarvel

// Every shared component once, with sample texts, for review. `sampleController` (made by C++)
// feeds the navigation bar and `sampleStack` a small navigation stack.
ApplicationWindow {
    id: gallery
    property ViewController sampleController: null
    property NavigationController sampleStack: null
    property url sampleImage

    width: 375
    height: 667
    visible: true
    title: "组件样例"
    color: Theme.background
    font.family: Theme.fontFamily

    header: NavigationBar {
        title: "组件样例"
        controller: gallery.sampleController
    }

    component Section: Column {
        property string caption
        width: parent ? parent.width : 0
        spacing: 8
        Text {
            text: parent.caption
            color: Theme.textSecondary
            font.pixelSize: Theme.fontFootnote
        }
    }

    LabelState { id: badgeState; text: "3"; textColor: Theme.textOnDark; backgroundColor: Theme.badge }
    LabelState { id: nameState; text: "玩家小明" }
    ButtonState { id: loginState; title: "登录"; titleColor: Theme.textOnDark; }
    ButtonState { id: countdownState; title: "获取验证码"; disabledTitle: "45S"; enabled: false }
    ButtonState { id: sortState; title: "最新"; selectedTitle: "最新 ✓"; selected: true; titleColor: Theme.textPrimary; selectedTitleColor: Theme.accent }
    TextFieldState { id: accountState; placeholder: "手机号/邮箱"; keyboardType: TextFieldState.EmailAddress; clearButtonShown: true }
    TextFieldState { id: passwordState; text: "secret99"; placeholder: "密码"; secureTextEntry: true }
    TextViewState { id: feedbackState; placeholder: "请输入您的意见，我们会尽快回复" }
    SwitchState { id: pushState; on: true }
    RefreshHeaderState { id: headerState }
    RefreshFooterState { id: footerState }

    Flickable {
        anchors.fill: parent
        contentHeight: page.height + 24
        clip: true

        Column {
            id: page
            x: 16
            y: 12
            width: parent.width - 32
            spacing: 18

            Section {
                caption: "价格 PriceLabel"
                Row {
                    spacing: 24
                    PriceLabel { price: "68"; listPrice: "98" }
                    PriceLabel { price: "199" }
                    PriceLabel { price: "9.9"; listPrice: "39.9"; pixelSize: Theme.fontTitle2 }
                }
            }

            Section {
                caption: "按钮 BoundButton"
                Row {
                    spacing: 12
                    BoundButton {
                        state: loginState
                        width: 120
                        background: Rectangle { radius: 4; color: Theme.navigationBar }
                    }
                    BoundButton {
                        state: countdownState
                        background: Rectangle { radius: 4; color: Theme.cardBackground; border.color: Theme.separator }
                    }
                    BoundButton { state: sortState }
                }
            }

            Section {
                caption: "输入框 BoundTextField / BoundTextView"
                BoundTextField { state: accountState; width: parent.width }
                BoundTextField { state: passwordState; width: parent.width }
                BoundTextView { state: feedbackState; width: parent.width; height: 72 }
            }

            Section {
                caption: "标签与开关 BoundLabel / BoundSwitch"
                Row {
                    spacing: 16
                    BoundLabel { state: nameState; anchors.verticalCenter: parent.verticalCenter; font.pixelSize: Theme.fontHeadline }
                    BoundLabel {
                        state: badgeState
                        anchors.verticalCenter: parent.verticalCenter
                        width: 15; height: 15
                        font.pixelSize: Theme.fontMicro
                        horizontalAlignment: Text.AlignHCenter
                        verticalAlignment: Text.AlignVCenter
                        badgeRoundness: 1
                    }
                    Text { text: "接收推送"; anchors.verticalCenter: parent.verticalCenter; color: Theme.textPrimary; font.pixelSize: Theme.fontBody }
                    BoundSwitch { state: pushState }
                }
            }

            Section {
                caption: "网络图片 RemoteImage（加载中 / 已加载）"
                Row {
                    spacing: 12
                    RemoteImage { width: 150; height: 84 }
                    RemoteImage { width: 150; height: 84; source: gallery.sampleImage }
                }
            }

            Section {
                caption: "下拉刷新与加载更多 RefreshHeader / LoadMoreFooter"
                Rectangle {
                    width: parent.width
                    height: 200
                    color: Theme.cardBackground
                    border.color: Theme.separator
                    ListView {
                        id: sampleList
                        anchors.fill: parent
                        anchors.margins: 1
                        clip: true
                        model: ["巫师3：狂猎 年度版", "文明VI", "星露谷物语"]
                        delegate: Item {
                            required property string modelData
                            width: sampleList.width
                            height: 36
                            Text { x: 12; anchors.verticalCenter: parent.verticalCenter; text: modelData; color: Theme.textPrimary; font.pixelSize: Theme.fontCallout }
                            Rectangle { anchors.bottom: parent.bottom; width: parent.width; height: 1; color: Theme.separator }
                        }
                        footer: LoadMoreFooter { target: sampleList; footer: footerState }
                    }
                    RefreshHeader {
                        anchors.left: parent.left
                        anchors.right: parent.right
                        anchors.top: parent.top
                        anchors.margins: 1
                        target: sampleList
                        header: headerState
                    }
                }
            }

            Section {
                caption: "导航栈 ControllerView"
                visible: gallery.sampleStack !== null
                Rectangle {
                    width: parent.width
                    height: 180
                    border.color: Theme.separator
                    ControllerView {
                        anchors.fill: parent
                        anchors.margins: 1
                        controller: gallery.sampleStack
                    }
                }
            }
        }
    }

    AlertDialog { anchors.fill: parent; parent: Overlay.overlay }
    ActionSheet { anchors.fill: parent; parent: Overlay.overlay }
    HudOverlay { anchors.fill: parent; parent: Overlay.overlay }

    Component.onCompleted: {
        headerState.beginRefreshing()
        footerState.noticeNoMoreData()
    }
}
