#pragma once

#include <gio/gio.h>

#include <memory>
#include <string>
#include <utility>

namespace tolvane::linuxhost {

struct GLibRelease {
    void operator()(GVariant* value) const { g_variant_unref(value); }
    void operator()(GError* error) const { g_error_free(error); }
    void operator()(char* text) const { g_free(text); }
    void operator()(char** list) const { g_strfreev(list); }
    void operator()(GKeyFile* file) const { g_key_file_free(file); }
    void operator()(GDBusNodeInfo* node) const { g_dbus_node_info_unref(node); }
};

/// Owns a GLib value and frees it with the function for its type.
template <typename Type>
using GLibOwned = std::unique_ptr<Type, GLibRelease>;

/// A new GVariant has a floating reference; `taken` sinks it.
using Variant = GLibOwned<GVariant>;
inline Variant taken(GVariant* fresh) { return Variant(fresh == nullptr ? nullptr : g_variant_ref_sink(fresh)); }

struct GObjectRelease {
    template <typename Type>
    void operator()(Type* object) const {
        g_object_unref(object);
    }
};
template <typename Type>
using GObjectOwned = std::unique_ptr<Type, GObjectRelease>;

/// A GLib error message; GLib writes it through `place`.
class Failure {
public:
    Failure() = default;
    Failure(const Failure&) = delete;
    Failure& operator=(const Failure&) = delete;
    ~Failure() {
        if (error_ != nullptr) g_error_free(error_);
    }

    GError** place() { return &error_; }
    std::string text() const { return error_ == nullptr ? std::string() : error_->message; }
    bool is(GQuark domain, int code) const { return g_error_matches(error_, domain, code) != FALSE; }

private:
    GError* error_ = nullptr;
};

inline std::string textOf(char* fresh) {
    const GLibOwned<char> owner(fresh);
    return fresh == nullptr ? std::string() : std::string(fresh);
}

}  // namespace tolvane::linuxhost
