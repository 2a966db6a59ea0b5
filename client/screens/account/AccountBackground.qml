import QtQuick
import Tarvel

// The account pages' backdrop: the bar's blue deepening downwards, under the background picture.
Item {
    property string imageName: ""

    Rectangle {
        anchors.fill: parent
        gradient: Gradient {
            GradientStop { position: 0; color: Theme.navigationBar }
            GradientStop { position: 1; color: Theme.navigationBarDeep }
        }
    }
    Image {
        anchors.fill: parent
        source: Assets.imageUrl(parent.imageName)
        fillMode: Image.PreserveAspectCrop
        visible: source.toString().length > 0
    }
}
