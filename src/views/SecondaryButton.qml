pragma ComponentBehavior: Bound

import Vantrel

/// Another thing that can be done.
BaseButton {
    fillColor: enabled ? Theme.card : Theme.sunken
    borderColor: Theme.lineStrong
}
