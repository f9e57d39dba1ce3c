#include "shell/platform/ParentProgressWindow.h"

#include <xcb/xcb.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace tavrel {
namespace ParentProgressWindow {

namespace {

struct FreeDeleter {
    void operator()(void *p) const { std::free(p); }
};
template <typename T> using XcbReply = std::unique_ptr<T, FreeDeleter>;

class Connection {
public:
    Connection() {
        if (!qEnvironmentVariableIsSet("DISPLAY"))
            return;
        int screenNumber = 0;
        m_connection = xcb_connect(nullptr, &screenNumber);
        if (xcb_connection_has_error(m_connection))
            return;
        xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(m_connection));
        for (int i = 0; i < screenNumber && it.rem; ++i)
            xcb_screen_next(&it);
        if (it.rem)
            m_root = it.data->root;
    }
    ~Connection() {
        if (m_connection)
            xcb_disconnect(m_connection);
    }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;

    bool ok() const { return m_connection && m_root != XCB_NONE; }
    xcb_connection_t *get() const { return m_connection; }
    xcb_window_t root() const { return m_root; }

    xcb_atom_t atom(const char *name) const {
        const xcb_intern_atom_cookie_t cookie =
            xcb_intern_atom(m_connection, 0, uint16_t(std::strlen(name)), name);
        XcbReply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(m_connection, cookie, nullptr));
        return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
    }

    QByteArray property(xcb_window_t window, xcb_atom_t property, xcb_atom_t type) const {
        const xcb_get_property_cookie_t cookie =
            xcb_get_property(m_connection, 0, window, property, type, 0, 4096);
        XcbReply<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(m_connection, cookie, nullptr));
        if (!reply || reply->type == XCB_ATOM_NONE)
            return {};
        return QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                          xcb_get_property_value_length(reply.get()));
    }

    std::vector<xcb_window_t> windowList(xcb_window_t window, xcb_atom_t property) const {
        const QByteArray data = this->property(window, property, XCB_ATOM_WINDOW);
        std::vector<xcb_window_t> windows(std::size_t(data.size()) / sizeof(xcb_window_t));
        if (!windows.empty())
            std::memcpy(windows.data(), data.constData(), windows.size() * sizeof(xcb_window_t));
        return windows;
    }

    std::vector<xcb_window_t> children(xcb_window_t window) const {
        XcbReply<xcb_query_tree_reply_t> reply(
            xcb_query_tree_reply(m_connection, xcb_query_tree(m_connection, window), nullptr));
        if (!reply)
            return {};
        const xcb_window_t *list = xcb_query_tree_children(reply.get());
        return std::vector<xcb_window_t>(list, list + xcb_query_tree_children_length(reply.get()));
    }

private:
    xcb_connection_t *m_connection = nullptr;
    xcb_window_t m_root = XCB_NONE;
};

QString windowTitleOf(const Connection &c, xcb_window_t window) {
    const QByteArray netName = c.property(window, c.atom("_NET_WM_NAME"), c.atom("UTF8_STRING"));
    if (!netName.isEmpty())
        return QString::fromUtf8(netName);
    return QString::fromLatin1(c.property(window, XCB_ATOM_WM_NAME, XCB_ATOM_STRING));
}

// With an EWMH window manager the client list names every top-level window; without one,
// top-level windows are children of the root (or grandchildren under a reparenting manager).
xcb_window_t findWindow(const Connection &c, const QString &wanted) {
    for (xcb_window_t window : c.windowList(c.root(), c.atom("_NET_CLIENT_LIST"))) {
        if (windowTitleOf(c, window) == wanted)
            return window;
    }
    for (xcb_window_t child : c.children(c.root())) {
        if (windowTitleOf(c, child) == wanted)
            return child;
        for (xcb_window_t grandChild : c.children(child)) {
            if (windowTitleOf(c, grandChild) == wanted)
                return grandChild;
        }
    }
    return XCB_NONE;
}

bool supportsDeleteWindow(const Connection &c, xcb_window_t window, xcb_atom_t deleteWindow) {
    const QByteArray data = c.property(window, c.atom("WM_PROTOCOLS"), XCB_ATOM_ATOM);
    const auto *atoms = reinterpret_cast<const xcb_atom_t *>(data.constData());
    for (std::size_t i = 0; i < std::size_t(data.size()) / sizeof(xcb_atom_t); ++i) {
        if (atoms[i] == deleteWindow)
            return true;
    }
    return false;
}

void sendClientMessage(const Connection &c, xcb_window_t target, xcb_window_t window,
                       xcb_atom_t type, uint32_t d0, uint32_t d1, uint32_t mask) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    event.data.data32[0] = d0;
    event.data.data32[1] = d1;
    xcb_send_event(c.get(), 0, target, mask, reinterpret_cast<const char *>(&event));
}

} // namespace

bool exists(const QString &windowTitle) {
    const Connection c;
    return c.ok() && findWindow(c, windowTitle) != XCB_NONE;
}

bool close(const QString &windowTitle) {
    const Connection c;
    if (!c.ok())
        return false;
    const xcb_window_t window = findWindow(c, windowTitle);
    if (window == XCB_NONE)
        return false;

    // Show it normally first, as the parent may have minimised it.
    xcb_map_window(c.get(), window);

    const xcb_atom_t deleteWindow = c.atom("WM_DELETE_WINDOW");
    if (supportsDeleteWindow(c, window, deleteWindow)) {
        sendClientMessage(c, window, window, c.atom("WM_PROTOCOLS"), deleteWindow, XCB_CURRENT_TIME,
                          XCB_EVENT_MASK_NO_EVENT);
    } else {
        sendClientMessage(c, c.root(), window, c.atom("_NET_CLOSE_WINDOW"), XCB_CURRENT_TIME, 2,
                          XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT |
                              XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
    }
    xcb_flush(c.get());
    return true;
}

} // namespace ParentProgressWindow
} // namespace tavrel
