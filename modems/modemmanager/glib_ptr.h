// GLib's objects with an owner.
#ifndef MODEMS_MODEMMANAGER_GLIB_PTR_H
#define MODEMS_MODEMMANAGER_GLIB_PTR_H

#include <gio/gio.h>
#include <memory>

namespace modem_manager
{

template <auto release>
struct Releaser {
    template <class Type>
    void operator()(Type *owned) const
    {
        release(owned);
    }
};
template <class Type, auto release>
using Owned = std::unique_ptr<Type, Releaser<release>>;

template <class Type>
using ObjectPtr = Owned<Type, g_object_unref>;
using ErrorPtr = Owned<GError, g_error_free>;
using ContextPtr = Owned<GMainContext, g_main_context_unref>;
using LoopPtr = Owned<GMainLoop, g_main_loop_unref>;
using SourcePtr = Owned<GSource, g_source_unref>;
using TextPtr = Owned<char, g_free>;

} // namespace modem_manager

#endif
