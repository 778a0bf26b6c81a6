// SPDX-License-Identifier: GPL-3.0-or-later
#include "Tovrane/platform/panels/BusConnector.h"

#include <csignal>
#include <cstdint>
#include <dbus/dbus.h>
#include <dlfcn.h>
#include <mutex>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace Tovra
{
// What the worker and the window thread share. The last of them frees it.
struct BusConnector::Attempt
{
    Attempt() : wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
    ~Attempt()
    {
        closeBusConnection(made);
        if (wake >= 0)
            close(wake);
    }
    Attempt(const Attempt&) = delete;
    Attempt& operator=(const Attempt&) = delete;

    void connect(const std::string& address)
    {
        DBusConnection* const connection = dbus_connection_open_private(address.c_str(), nullptr);
        const std::lock_guard guard(lock);
        made = connection;
        isOver = true;
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = write(wake, &one, sizeof one);
    }

    const int wake; // becomes readable when it is over
    std::mutex lock;
    DBusConnection* made = nullptr; // these two are under the lock
    bool isOver = false;
};

void closeBusConnection(DBusConnection* connection)
{
    if (connection == nullptr)
        return;
    dbus_connection_close(connection);
    dbus_connection_unref(connection);
}

namespace
{
// The code of this object file stays loaded, whoever unloads the plug-in.
void keepCodeLoaded()
{
    Dl_info here;
    if (dladdr(reinterpret_cast<void*>(&keepCodeLoaded), &here) != 0 && here.dli_fname != nullptr)
        dlopen(here.dli_fname, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE);
}

// Meanwhile new threads get no signals: those are the host's.
class SignalsBlocked
{
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

private:
    sigset_t before;
};
}

BusConnector::~BusConnector()
{
    watch.stop();
    if (!worker.joinable())
        return;
    bool isOver;
    {
        const std::lock_guard guard(attempt->lock);
        isOver = attempt->isOver;
    }
    if (!isOver)
        keepCodeLoaded();
    isOver ? worker.join() : worker.detach();
}

void BusConnector::start(const std::string& address, Connected connected)
{
    dbus_connection_set_change_sigpipe(FALSE); // that is the host's, too
    attempt = std::make_shared<Attempt>();
    whenConnected = std::move(connected);
    if (attempt->wake < 0)
        return whenConnected(nullptr);
    watch.start(attempt->wake, [this] { finish(); });
    try
    {
        const SignalsBlocked blocked;
        worker = std::thread([shared = attempt, address] { shared->connect(address); });
    }
    catch (const std::system_error&)
    {
        watch.stop();
        whenConnected(nullptr);
    }
}

void BusConnector::finish()
{
    watch.stop();
    worker.join(); // it has nothing left to do
    whenConnected(std::exchange(attempt->made, nullptr));
}
}
