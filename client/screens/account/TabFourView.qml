import QtQuick
import Tarvel

// "我的Tarvel": the head picture under the see-through bar with the round avatar and nickname, the
// six menu buttons, sign-out and the about link, in one scrolling page.
Rectangle {
    id: view
    property TabFourViewController controller: null

    color: Theme.listBackground

    Flickable {
        id: scrollContainer
        objectName: "scrollContainer"
        anchors.fill: parent
        contentHeight: content.height + Theme.spacingXLarge
        boundsBehavior: Flickable.DragOverBounds

        Column {
            id: content
            width: parent.width

            Image {
                id: head
                width: parent.width
                height: 230
                source: Assets.imageUrl("myInfo_bg")
                sourceSize: Qt.size(750, 460)
                fillMode: Image.PreserveAspectCrop

                Column {
                    anchors.horizontalCenter: parent.horizontalCenter
                    anchors.bottom: parent.bottom
                    anchors.bottomMargin: Theme.spacingXLarge
                    spacing: Theme.spacingRegular

                    Item {
                        id: avatar
                        objectName: "imageHead"
                        anchors.horizontalCenter: parent.horizontalCenter
                        width: 76
                        height: 76

                        Image {
                            anchors.fill: parent
                            source: Assets.imageUrl("myInfo_defaultHead")
                            sourceSize: Qt.size(152, 152)
                            visible: !roundHead.ready
                        }
                        // The avatar drawn into a circle with a white ring.
                        Canvas {
                            id: roundHead
                            property url source: view.controller ? view.controller.imageHead : ""
                            property bool ready: false
                            anchors.fill: parent
                            onSourceChanged: {
                                ready = false
                                if (source.toString().length > 0)
                                    loadImage(source)
                                requestPaint()
                            }
                            onImageLoaded: {
                                ready = isImageLoaded(source)
                                requestPaint()
                            }
                            onPaint: {
                                const context = getContext("2d")
                                context.reset()
                                if (!ready)
                                    return
                                context.save()
                                context.beginPath()
                                context.arc(width / 2, height / 2, width / 2 - 1, 0, 2 * Math.PI)
                                context.closePath()
                                context.clip()
                                context.drawImage(source, 0, 0, width, height)
                                context.restore()
                                context.beginPath()
                                context.arc(width / 2, height / 2, width / 2 - 1.5, 0, 2 * Math.PI)
                                context.lineWidth = 3
                                context.strokeStyle = Theme.textOnDark
                                context.stroke()
                            }
                        }
                    }
                    Text {
                        objectName: "labelName"
                        anchors.horizontalCenter: parent.horizontalCenter
                        width: Math.min(implicitWidth, view.width - 2 * Theme.spacingXLarge)
                        horizontalAlignment: Text.AlignHCenter
                        elide: Text.ElideRight
                        text: view.controller && view.controller.nickName.length > 0
                              ? view.controller.nickName : "Tarvel玩家"
                        color: Theme.textOnDark
                        font.family: Theme.fontFamily
                        font.pixelSize: Theme.fontTitle3
                        font.weight: Font.Medium
                    }
                }
            }

            Rectangle {
                width: parent.width
                height: menu.height
                color: Theme.cardBackground

                Grid {
                    id: menu
                    columns: 3
                    width: parent.width

                    Repeater {
                        model: view.controller ? view.controller.menuButtons : []
                        delegate: Rectangle {
                            id: item
                            required property var modelData
                            required property int index
                            objectName: "menuButton" + index
                            width: menu.width / 3
                            height: 104
                            color: touch.pressed ? Theme.rowPressed : Theme.cardBackground

                            Column {
                                anchors.centerIn: parent
                                spacing: Theme.spacingMedium
                                Image {
                                    anchors.horizontalCenter: parent.horizontalCenter
                                    width: 44
                                    height: 44
                                    sourceSize: Qt.size(88, 88)
                                    source: Assets.imageUrl(item.modelData.imageName)
                                }
                                Text {
                                    anchors.horizontalCenter: parent.horizontalCenter
                                    text: item.modelData.title
                                    color: Theme.textPrimary
                                    font.family: Theme.fontFamily
                                    font.pixelSize: Theme.fontCallout
                                }
                            }
                            Rectangle {
                                anchors.right: parent.right
                                width: Theme.hairlineWidth
                                height: parent.height
                                color: Theme.hairline
                                visible: item.index % 3 !== 2
                            }
                            Rectangle {
                                anchors.bottom: parent.bottom
                                width: parent.width
                                height: Theme.hairlineWidth
                                color: Theme.hairline
                                visible: item.index < 3
                            }
                            MouseArea {
                                id: touch
                                anchors.fill: parent
                                onClicked: item.modelData.tap()
                            }
                        }
                    }
                }
            }

            Item {
                width: parent.width
                height: Theme.spacingXLarge
            }

            Rectangle {
                objectName: "buttonLogOut"
                anchors.horizontalCenter: parent.horizontalCenter
                width: parent.width - 2 * Theme.spacingLarge
                height: Theme.buttonHeight
                radius: Theme.radiusMedium
                color: logOutTouch.pressed ? Theme.rowPressed : Theme.cardBackground
                border.color: Theme.controlBorder
                border.width: Theme.hairlineWidth

                Text {
                    anchors.centerIn: parent
                    text: view.controller ? view.controller.buttonLogOut.title : ""
                    color: Theme.destructive
                    font.family: Theme.fontFamily
                    font.pixelSize: Theme.fontBody
                }
                MouseArea {
                    id: logOutTouch
                    anchors.fill: parent
                    onClicked: view.controller.buttonLogOut.tap()
                }
            }

            Item {
                width: parent.width
                height: Theme.spacingLarge
            }

            Text {
                objectName: "buttonAbout"
                anchors.horizontalCenter: parent.horizontalCenter
                text: view.controller ? view.controller.buttonAbout.title : ""
                color: Theme.link
                font.family: Theme.fontFamily
                font.pixelSize: Theme.fontSubhead
                font.underline: true

                MouseArea {
                    anchors.fill: parent
                    anchors.margins: -Theme.spacingMedium
                    onClicked: view.controller.buttonAbout.tap()
                }
            }
        }
    }
}
