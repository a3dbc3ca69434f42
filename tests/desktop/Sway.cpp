#include "Sway.h"

#include "support/Waiting.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryFile>

#include <csignal>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>
#include <virtual-keyboard-unstable-v1.h>
#include <wayland-client.h>
#include <wlr-virtual-pointer-unstable-v1.h>

namespace {

/// It does not run as root, in which a container's tests do.
constexpr uid_t nobody = 65534;

QByteArray outputOf(World& world, const QString& program, const QStringList& arguments)
{
    QProcess& process = world.start(program, arguments);
    if (!process.waitForFinished(20'000) || process.exitCode() != 0)
        qFatal("%s %s failed", qPrintable(program), qPrintable(arguments.join(QLatin1Char(' '))));
    return process.readAllStandardOutput();
}

constexpr char usualKeyboard[] = "xkb_keymap {"
                                 "xkb_keycodes { include \"evdev\" };"
                                 "xkb_types { include \"complete\" };"
                                 "xkb_compat { include \"complete\" };"
                                 "xkb_symbols { include \"pc+us\" };"
                                 "};";

constexpr QRgb desktopColor = 0xFF335577;

/// The box of a shape that begins with this pixel. It becomes part of the desktop.
QRect takeShape(QImage& image, QPoint first)
{
    QRect box(first, QSize(1, 1));
    std::vector<QPoint> found{first};
    image.setPixel(first, desktopColor);
    while (!found.empty()) {
        const QPoint at = found.back();
        found.pop_back();
        box |= QRect(at, QSize(1, 1));
        for (const QPoint step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
            const QPoint next = at + step;
            if (image.rect().contains(next) && image.pixel(next) != desktopColor) {
                image.setPixel(next, desktopColor);
                found.push_back(next);
            }
        }
    }
    return box;
}

struct Globals
{
    zwlr_virtual_pointer_manager_v1* pointers = nullptr;
    zwp_virtual_keyboard_manager_v1* keyboards = nullptr;
    wl_seat* seat = nullptr;
};

template <typename Proxy>
void bindIf(const char* interface, const wl_interface& wanted, wl_registry* registry, uint32_t name,
            Proxy*& proxy)
{
    if (std::strcmp(interface, wanted.name) == 0)
        proxy = static_cast<Proxy*>(wl_registry_bind(registry, name, &wanted, 1));
}

constexpr wl_registry_listener registryListener{
    .global =
        [](void* data, wl_registry* registry, uint32_t name, const char* interface, uint32_t) {
            auto& globals = *static_cast<Globals*>(data);
            bindIf(interface, zwlr_virtual_pointer_manager_v1_interface, registry, name,
                   globals.pointers);
            bindIf(interface, zwp_virtual_keyboard_manager_v1_interface, registry, name,
                   globals.keyboards);
            bindIf(interface, wl_seat_interface, registry, name, globals.seat);
        },
    .global_remove = [](void*, wl_registry*, uint32_t) {},
};

void collectWindows(const QJsonObject& node, QList<QJsonObject>& windows)
{
    if (node.value(QLatin1String("pid")).isDouble())
        windows.append(node);
    for (const char* list : {"nodes", "floating_nodes"}) {
        const QJsonArray children = node.value(QLatin1String(list)).toArray();
        for (const auto& child : children)
            collectWindows(child.toObject(), windows);
    }
}

QList<QJsonObject> windowsIn(const QByteArray& tree)
{
    QList<QJsonObject> windows;
    collectWindows(QJsonDocument::fromJson(tree).object(), windows);
    return windows;
}

QString titleOf(const QJsonObject& window)
{
    return window.value(QLatin1String("name")).toString();
}

} // namespace

Sway::Sway(World& world, const QByteArray& settings)
    : m_world(world)
{
    world.setVariable(QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless"));
    world.setVariable(QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1"));
    startIn("output HEADLESS-1 resolution 1280x800 position 0 0\n" + settings);
}

Sway::Sway(World& world, Windows screens, const QByteArray& settings)
    : m_world(world)
    , m_layoutSize(1024 * screens.count, 768)
{
    world.setVariable(QStringLiteral("WLR_BACKENDS"), QStringLiteral("x11"));
    world.setVariable(QStringLiteral("WLR_X11_OUTPUTS"), QString::number(screens.count));
    QByteArray places;
    for (int i = 0; i < screens.count; ++i) {
        places += "output X11-" + QByteArray::number(i + 1) + " position " +
                  QByteArray::number(1024 * i) + " 0\n";
    }
    startIn(places + settings);
}

void Sway::startIn(const QByteArray& settings)
{
    World& world = m_world;
    const QString folder = world.path(QStringLiteral("sway"));
    QDir().mkpath(folder);
    const QString config = world.path(QStringLiteral("sway.conf"));
    // A picture: of a plain colour sway 1.10 makes a gradient at scales between whole ones.
    const QString background = world.path(QStringLiteral("background.png"));
    QImage plain(8, 8, QImage::Format_RGB32);
    plain.fill(desktopColor);
    if (!plain.save(background))
        qFatal("the background cannot be written");
    world.writeFile(config, "output * bg " + background.toUtf8() +
                                " tile\n"
                                "xwayland disable\n"
                                "default_border none\n"
                                "for_window [title=.*] floating enable, move position 40 200\n" +
                                settings);
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    QStringList command{QStringLiteral("sway"), QStringLiteral("-c"), config};
    if (::geteuid() == 0) {
        if (::chown(qPrintable(folder), nobody, nobody) != 0 ||
            ::chmod(qPrintable(world.path(QString())), 0755) != 0)
            qFatal("the compositor's folder cannot be given away");
        command = QStringList{QStringLiteral("setpriv"), QStringLiteral("--reuid=65534"),
                              QStringLiteral("--regid=65534"), QStringLiteral("--clear-groups")} +
                  command;
    }
    const QString runtime = QStringLiteral("XDG_RUNTIME_DIR");
    world.setVariable(runtime, folder);
    world.setVariable(QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman"));
    m_process = &world.start(command.takeFirst(), command);
    world.setVariable(runtime, world.path(QStringLiteral("runtime")));
    world.unsetVariable(QStringLiteral("DISPLAY"));

    const auto socket = [&folder](const char* pattern) {
        QString found;
        const bool isThere = waitUntil([&] {
            const QStringList files = QDir(folder).entryList(
                {QLatin1String(pattern)}, QDir::AllEntries | QDir::System, QDir::Name);
            found = files.isEmpty() ? QString() : folder + QLatin1Char('/') + files.first();
            return !found.isEmpty();
        });
        if (!isThere)
            qFatal("sway does not start");
        return found;
    };
    world.setVariable(QStringLiteral("SWAYSOCK"), socket("sway-ipc.*"));
    const QString display = socket("wayland-?");
    world.setVariable(QStringLiteral("WAYLAND_DISPLAY"), display);

    m_display = wl_display_connect(qPrintable(display));
    if (!m_display)
        qFatal("sway cannot be reached");
    Globals globals;
    wl_registry* registry = wl_display_get_registry(m_display);
    wl_registry_add_listener(registry, &registryListener, &globals);
    wl_display_roundtrip(m_display);
    wl_registry_destroy(registry);
    if (!globals.pointers || !globals.keyboards || !globals.seat)
        qFatal("sway knows no virtual pointers and keyboards");
    m_pointers = globals.pointers;
    plugPointer();
    m_keyboard =
        zwp_virtual_keyboard_manager_v1_create_virtual_keyboard(globals.keyboards, globals.seat);
    zwp_virtual_keyboard_manager_v1_destroy(globals.keyboards);
    wl_seat_destroy(globals.seat);
    QTemporaryFile keymap;
    if (!keymap.open() || keymap.write(usualKeyboard) < 0 || !keymap.flush())
        qFatal("the keyboard cannot be described");
    zwp_virtual_keyboard_v1_keymap(m_keyboard, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, keymap.handle(),
                                   sizeof usualKeyboard);
    moveTo({640, 700});
}

Sway::~Sway()
{
    zwp_virtual_keyboard_v1_destroy(m_keyboard);
    zwlr_virtual_pointer_v1_destroy(m_pointer);
    zwlr_virtual_pointer_manager_v1_destroy(m_pointers);
    wl_display_disconnect(m_display);
}

QByteArray Sway::ask(const QStringList& arguments) const
{
    return outputOf(m_world, QStringLiteral("swaymsg"), arguments);
}

void Sway::command(const QString& command)
{
    ask({command});
}

void Sway::stop() const
{
    ::kill(static_cast<pid_t>(m_process->processId()), SIGSTOP);
}

void Sway::goOn() const
{
    ::kill(static_cast<pid_t>(m_process->processId()), SIGCONT);
}

QList<QRect> Sway::shapes(const QString& screen)
{
    QImage image = picture(screen).convertToFormat(QImage::Format_RGB32);
    QList<QRect> boxes;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != desktopColor)
                boxes.append(takeShape(image, {x, y}));
        }
    }
    return boxes;
}

QStringList Sway::screens() const
{
    QStringList names;
    const QJsonArray outputs =
        QJsonDocument::fromJson(
            ask({QStringLiteral("-r"), QStringLiteral("-t"), QStringLiteral("get_outputs")}))
            .array();
    for (const auto& output : outputs)
        names.append(output[QLatin1String("name")].toString());
    return names;
}

QStringList Sway::windows() const
{
    QStringList titles;
    const auto windows =
        windowsIn(ask({QStringLiteral("-r"), QStringLiteral("-t"), QStringLiteral("get_tree")}));
    for (const QJsonObject& window : windows)
        titles.append(titleOf(window));
    return titles;
}

QString Sway::focused() const
{
    const auto windows =
        windowsIn(ask({QStringLiteral("-r"), QStringLiteral("-t"), QStringLiteral("get_tree")}));
    for (const QJsonObject& window : windows) {
        if (window.value(QLatin1String("focused")).toBool())
            return titleOf(window);
    }
    return {};
}

QImage Sway::picture(const QString& screen)
{
    return QImage::fromData(outputOf(m_world, QStringLiteral("grim"),
                                     {QStringLiteral("-t"), QStringLiteral("ppm"),
                                      QStringLiteral("-o"), screen, QStringLiteral("-")}));
}

/// The compositor has handled what was sent.
void Sway::sent()
{
    zwlr_virtual_pointer_v1_frame(m_pointer);
    wl_display_roundtrip(m_display);
}

void Sway::moveTo(QPoint at)
{
    zwlr_virtual_pointer_v1_motion_absolute(
        m_pointer, 0, static_cast<uint32_t>(at.x()), static_cast<uint32_t>(at.y()),
        static_cast<uint32_t>(m_layoutSize.width()), static_cast<uint32_t>(m_layoutSize.height()));
    sent();
}

void Sway::moveBy(QPoint way)
{
    zwlr_virtual_pointer_v1_motion(m_pointer, 0, wl_fixed_from_int(way.x()),
                                   wl_fixed_from_int(way.y()));
    sent();
}

void Sway::unplugPointer()
{
    zwlr_virtual_pointer_v1_destroy(m_pointer);
    m_pointer = nullptr;
    wl_display_roundtrip(m_display);
}

void Sway::plugPointer()
{
    m_pointer = zwlr_virtual_pointer_manager_v1_create_virtual_pointer(m_pointers, nullptr);
    wl_display_roundtrip(m_display);
}

void Sway::press(int button)
{
    zwlr_virtual_pointer_v1_button(m_pointer, 0, static_cast<uint32_t>(button),
                                   WL_POINTER_BUTTON_STATE_PRESSED);
    sent();
}

void Sway::release(int button)
{
    zwlr_virtual_pointer_v1_button(m_pointer, 0, static_cast<uint32_t>(button),
                                   WL_POINTER_BUTTON_STATE_RELEASED);
    sent();
}

void Sway::click(QPoint at, int button)
{
    moveTo(at);
    press(button);
    release(button);
}

void Sway::type(int key)
{
    for (const uint32_t state : {WL_KEYBOARD_KEY_STATE_PRESSED, WL_KEYBOARD_KEY_STATE_RELEASED}) {
        zwp_virtual_keyboard_v1_key(m_keyboard, 0, static_cast<uint32_t>(key), state);
        wl_display_roundtrip(m_display);
    }
}
