// A description cannot make the filter open a file or a connection.
#include <cstdint>
#include <string>

#include <arpa/inet.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/socket.h>
#include <unistd.h>

#include "fil_process.h"
#include "temporary_folder.h"

namespace tvml {
namespace {

using platform::TemporaryFolder;

// Whether something has happened at a descriptor.
bool stirred(int descriptor) {
    pollfd ready{descriptor, POLLIN, 0};
    return poll(&ready, 1, 0) != 0;
}

class OutsideWorld : public testing::Test {
protected:
    OutsideWorld() {
        const std::string path = folder_.path().string();
        for (const char* name : {"e.txt", "e.dtd", "e.xsd"}) {
            folder_.write(name, "<!ENTITY e 'LEAK'>");
        }
        watch_ = inotify_init1(IN_NONBLOCK);
        EXPECT_GE(inotify_add_watch(watch_, path.c_str(), IN_OPEN | IN_ACCESS), 0);

        listener_ = socket(AF_INET, SOCK_STREAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(listener_, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(listener_, 8), 0);
        EXPECT_EQ(getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size), 0);
        http_ = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port));
    }
    ~OutsideWorld() override {
        close(watch_);
        close(listener_);
    }

    TemporaryFolder folder_;
    std::string http_;
    int watch_ = -1;    // of the folder
    int listener_ = -1; // at http_
};

TEST_F(OutsideWorld, TheWatchesSeeWhatTheyShould) {
    close(open((folder_.path() / "e.txt").c_str(), O_RDONLY));
    EXPECT_TRUE(stirred(watch_));
    const int caller = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    socklen_t size = sizeof address;
    getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
    EXPECT_EQ(connect(caller, reinterpret_cast<sockaddr*>(&address), size), 0);
    EXPECT_TRUE(stirred(listener_));
    close(caller);
}

TEST_F(OutsideWorld, StaysUntouched) {
    const std::string path = folder_.path().string();
    const std::string end = "<staging><opening>x &e; y</opening><talk a='&e;'>x</talk></staging>";
    for (const std::string& at : {path, "file://" + path, "file://localhost" + path, http_}) {
        const std::string descriptions[] = {
            "<!DOCTYPE s [<!ENTITY e SYSTEM '" + at + "/e.txt'>]>" + end,
            "<!DOCTYPE s [<!ENTITY e PUBLIC 'p' '" + at + "/e.txt'>]>" + end,
            "<!DOCTYPE s SYSTEM '" + at + "/e.dtd'>" + end,
            "<!DOCTYPE s PUBLIC 'p' '" + at + "/e.dtd' [<!ENTITY f 'x'>]>" + end,
            "<!DOCTYPE s [<!ENTITY % p SYSTEM '" + at + "/e.dtd'>%p;]>" + end,
            "<!DOCTYPE s [<!ENTITY e SYSTEM '" + at + "/e.txt'><!ATTLIST s a CDATA '&e;'>]>" + end,
            "<!DOCTYPE s [<!NOTATION n SYSTEM '" + at + "/e.txt'><!ENTITY e SYSTEM '" + at +
                "/e.txt' NDATA n>]>" + end,
            "<?xml-stylesheet href='" + at + "/e.xsd'?><xi:include href='" + at +
                "/e.txt' xmlns:xi='http://www.w3.org/2001/XInclude'/>",
            "<staging xmlns:i='http://www.w3.org/2001/XMLSchema-instance' "
            "i:noNamespaceSchemaLocation='" +
                at + "/e.xsd' i:schemaLocation='u " + at + "/e.xsd'><talk>x</talk></staging>",
        };
        for (const std::string& description : descriptions) {
            const std::u16string text(description.begin(), description.end());
            std::u16string script(4000, u'\0');
            EXPECT_GT(fil_process(u"A: x\n", 0, 0, text.c_str(), script.data(), 4000), 0);
            EXPECT_EQ(script.find(u"LEAK"), script.npos) << description;
            EXPECT_FALSE(stirred(watch_)) << description;
            EXPECT_FALSE(stirred(listener_)) << description;
        }
    }
}

} // namespace
} // namespace tvml
