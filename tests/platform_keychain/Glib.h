#pragma once

#include <gio/gio.h>

#include <memory>

namespace vantrel::test {

struct Unreference
{
    void operator()(gpointer object) const { g_object_unref(object); }
};
using Connection = std::unique_ptr<GDBusConnection, Unreference>;

struct UnreferenceVariant
{
    void operator()(GVariant *variant) const { g_variant_unref(variant); }
};
using Variant = std::unique_ptr<GVariant, UnreferenceVariant>;

/// A connection to the session's bus that the code under test does not share. Ends the process with
/// a message when there is no bus, since no test makes sense then.
[[nodiscard]] Connection connectToSessionBus();

/// Calls a method and gives its reply; ends the process with a message when it fails.
/// `parameters` may be floating.
Variant call(GDBusConnection *connection, const char *destination, const char *path,
             const char *interface, const char *method, GVariant *parameters);

} // namespace vantrel::test
