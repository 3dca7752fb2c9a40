pragma Singleton
import QtQuick
QtObject {}
