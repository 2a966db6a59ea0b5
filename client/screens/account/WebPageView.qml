import QtQuick
import Tarvel

// A full-screen web page.
Rectangle {
    id: view
    property WebPageViewController controller: null

    color: Theme.cardBackground

    WebPage {
        anchors.fill: parent
        state: view.controller ? view.controller.webView : null
    }
    Text {
        objectName: "webPageFailed"
        anchors.centerIn: parent
        width: parent.width - 2 * Theme.spacingXLarge
        visible: view.controller !== null
                 && view.controller.webView.loadState === WebViewState.Failed
        text: "页面加载失败，请检查网络后重试"
        wrapMode: Text.Wrap
        horizontalAlignment: Text.AlignHCenter
        color: Theme.textSecondary
        font.family: Theme.fontFamily
        font.pixelSize: Theme.fontCallout
    }
}
