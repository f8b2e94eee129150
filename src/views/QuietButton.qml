pragma ComponentBehavior: Bound
import Vantrel

/// A button that looks like text until it is met.
BaseButton {
    labelColor: Theme.inkHeading
    leftPadding: Theme.spaceS
    rightPadding: Theme.spaceS
}
