#include "tests/live/FakeSoundCard.h"

#include "tests/support/RouteParameter.h"
#include "tests/support/WaitFor.h"

#include <spa/monitor/utils.h>

#include <array>
#include <cerrno>
#include <stdexcept>
#include <utility>

namespace vornic {

FakeSoundCard::FakeSoundCard(const std::string& remote, std::int32_t profileDevice,
                             std::string portType)
    : profileDevice_(profileDevice), portType_(std::move(portType)) {
    spa_hook_list_init(&listeners_);
    static const spa_device_methods methods = [] {
        spa_device_methods device{};
        device.version = SPA_VERSION_DEVICE_METHODS;
        device.add_listener = [](void* self, spa_hook* hook, const spa_device_events* events,
                                 void* data) {
            auto* card = static_cast<FakeSoundCard*>(self);
            spa_hook_list others{};
            spa_hook_list_isolate(&card->listeners_, &others, hook, events, data);
            card->tellInfo(&card->listeners_);
            spa_hook_list_join(&card->listeners_, &others);
            return 0;
        };
        device.sync = [](void* self, int sequence) {
            spa_device_emit_result(&static_cast<FakeSoundCard*>(self)->listeners_, sequence, 0, 0,
                                   nullptr);
            return 0;
        };
        device.enum_params = [](void* self, int sequence, std::uint32_t parameter,
                                std::uint32_t start, std::uint32_t, const spa_pod*) {
            return static_cast<FakeSoundCard*>(self)->tellRoute(sequence, parameter, start);
        };
        device.set_param = [](void*, std::uint32_t, std::uint32_t, const spa_pod*) {
            return -ENOTSUP;
        };
        return device;
    }();
    device_.iface = {SPA_TYPE_INTERFACE_Device, SPA_VERSION_DEVICE, {&methods, this}};

    pw_init(nullptr, nullptr);
    loop_.reset(pw_thread_loop_new("vornic-card", nullptr));
    context_.reset(pw_context_new(pw_thread_loop_get_loop(loop_.get()),
                                  pw_properties_new(PW_KEY_CONFIG_NAME, "client-rt.conf", nullptr),
                                  0));
    core_.reset(pw_context_connect(
        context_.get(), pw_properties_new(PW_KEY_REMOTE_NAME, remote.c_str(), nullptr), 0));
    if (core_ == nullptr) {
        throw std::runtime_error("no connection to the sound server");
    }
    std::array<spa_dict_item, 3> items = {{{PW_KEY_MEDIA_CLASS, "Audio/Device"},
                                           {PW_KEY_DEVICE_NAME, "vornic-test-card"},
                                           {PW_KEY_DEVICE_API, "alsa"}}};
    const spa_dict properties = {0, static_cast<std::uint32_t>(items.size()), items.data()};
    proxy_.reset(pw_core_export(core_.get(), SPA_TYPE_INTERFACE_Device, &properties, &device_, 0));
    if (proxy_ == nullptr) {
        throw std::runtime_error("the sound server takes no card");
    }
    static const pw_proxy_events events = [] {
        pw_proxy_events proxy{};
        proxy.version = PW_VERSION_PROXY_EVENTS;
        proxy.bound = [](void* self, std::uint32_t id) {
            static_cast<FakeSoundCard*>(self)->id_ = id;
        };
        return proxy;
    }();
    pw_proxy_add_listener(proxy_.get(), &proxyListener_.hook, &events, this);
    pw_thread_loop_start(loop_.get());
}

FakeSoundCard::~FakeSoundCard() {
    pw_thread_loop_stop(loop_.get());
    spa_hook_remove(&proxyListener_.hook);
    proxyListener_.hook = {};
    proxy_.reset();
    core_.reset();
    context_.reset();
    loop_.reset();
    pw_deinit();
}

std::uint32_t FakeSoundCard::id() const {
    waitFor([this] { return id_ != SPA_ID_INVALID; });
    return id_;
}

void FakeSoundCard::plug(std::string portType) {
    pw_thread_loop_lock(loop_.get());
    portType_ = std::move(portType);
    changed_ = !changed_;
    tellInfo(&listeners_);
    pw_thread_loop_unlock(loop_.get());
}

void FakeSoundCard::tellInfo(spa_hook_list* listeners) const {
    // A flag that has turned over says that the values are new.
    spa_param_info route{};
    route.id = SPA_PARAM_Route;
    route.flags = SPA_PARAM_INFO_READ | (changed_ ? SPA_PARAM_INFO_SERIAL : 0U);
    std::array<spa_dict_item, 2> items = {
        {{PW_KEY_MEDIA_CLASS, "Audio/Device"}, {PW_KEY_DEVICE_BUS, "pci"}}};
    const spa_dict properties = {0, static_cast<std::uint32_t>(items.size()), items.data()};
    spa_device_info info{};
    info.version = SPA_VERSION_DEVICE_INFO;
    info.change_mask = SPA_DEVICE_CHANGE_MASK_PROPS | SPA_DEVICE_CHANGE_MASK_PARAMS;
    info.props = &properties;
    info.params = &route;
    info.n_params = 1;
    spa_device_emit_info(listeners, &info);
}

int FakeSoundCard::tellRoute(int sequence, std::uint32_t parameter, std::uint32_t start) {
    if (parameter != SPA_PARAM_Route) {
        return -ENOENT;
    }
    if (start == 0) {
        const RouteParameter route(SPA_DIRECTION_OUTPUT, profileDevice_,
                                   {{"port.type", portType_.c_str()}});
        spa_result_device_params result{};
        result.id = parameter;
        result.index = 0;
        result.next = 1;
        result.param = const_cast<spa_pod*>(route.pod());
        spa_device_emit_result(&listeners_, sequence, 0, SPA_RESULT_TYPE_DEVICE_PARAMS, &result);
    }
    return 0;
}

} // namespace vornic
