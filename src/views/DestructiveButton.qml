pragma ComponentBehavior: Bound

import Vantrel

/// Something that takes away, in a form; it is confirmed elsewhere.
SecondaryButton {
    labelColor: Theme.error
}
