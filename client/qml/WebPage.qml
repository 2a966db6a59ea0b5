import QtQuick
import QtWebView
import Tarvel

// Draws a WebViewState with Qt WebView and reports the page's start, finish and failure to it.
// The web view (and with it the web engine) is made only once a page is asked for.
Item {
    id: page
    property WebViewState state: null

    Loader {
        id: loader
        anchors.fill: parent
        active: page.state !== null && page.state.requestNumber > 0
        sourceComponent: WebView {
            id: web
            objectName: "webView"

            function follow() {
                if (page.state.html.length > 0 || page.state.url.toString().length === 0)
                    web.loadHtml(page.state.html, page.state.baseUrl)
                else if (web.url.toString() === page.state.url.toString())
                    web.reload()
                else
                    web.url = page.state.url
            }

            Component.onCompleted: follow()
            Connections {
                target: page.state
                function onRequestChanged() { web.follow() }
            }
            onLoadingChanged: (request) => {
                if (!page.state)
                    return
                if (request.status === WebView.LoadStartedStatus)
                    page.state.reportStarted()
                else if (request.status === WebView.LoadSucceededStatus)
                    page.state.reportFinished(web.title)
                else if (request.status === WebView.LoadFailedStatus)
                    page.state.reportFailed(request.errorString)
            }
        }
    }
}
