pragma ComponentBehavior: Bound

import Vantrel

/// A button that looks like text until it is met.
BaseButton {
    labelColor: hovered || down ? Theme.inkHeading : Theme.inkSecondary
    leftPadding: Theme.spaceS
    rightPadding: Theme.spaceS
}
