import QtQuick
import Tarvel

// The news page: the page itself in the web view. A page that could not be loaded leaves the
// screen blank.
Rectangle {
    id: view
    property NewsDetailViewController controller: null

    color: Theme.cardBackground

    WebPage {
        anchors.fill: parent
        visible: view.controller !== null
                 && view.controller.loadState !== NewsDetailViewController.Failed
        state: view.controller ? view.controller.webView : null
    }

    ICShareSheet {
        shareView: view.controller ? view.controller.shareView : null
    }
}
