import QtQuick
import QtQuick.Controls
import QtQuick.Controls.Material
import QtQuick.Layouts
import TideMark

// The one window. Until the main screen with its tabs stands, the stored events page stands in
// for the calendar page: it runs the page's appearance work and lists the events read back from
// the store.
ApplicationWindow {
    id: window
    width: 390
    height: 844
    minimumWidth: 320
    minimumHeight: 480
    visible: true
    title: qsTrId("appDisplayName")

    Material.theme: TideMarkApp.preferredColorScheme === "light" ? Material.Light
                  : TideMarkApp.preferredColorScheme === "dark" ? Material.Dark
                  : Material.System
    Material.accent: Material.Teal

    StoredEventsPage {
        anchors.fill: parent
    }
}
