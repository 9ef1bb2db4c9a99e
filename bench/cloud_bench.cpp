// tidemark-cloud-bench: backup and restore of N events and N memos through the WebDAV service
// against Apache httpd with mod_dav on loopback, timed, with the requests each record cost (from
// Apache's access log). The pause after each full backup batch is counted, not slept: its seconds
// are printed apart.
#include "LoopbackDav.h"
#include "TestSupport.h"
#include "cloud/addEditAndDelDataAtCloud.h"
#include "cloud/cloudKitFunc.h"
#include "platform/linux/CloudAccount.h"
#include "platform/linux/QtDispatcher.h"
#include "platform/linux/WebDavCloudService.h"
#include "records/Store.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <future>
#include <string>
#include <vector>

using namespace tidemark;
using namespace tidemark::testing;
namespace fs = std::filesystem;

namespace {

const DavUser kUser{"alice", "bench-Tide-Pass"};

eventInfo benchEvent(int i) {
    eventInfo e;
    e.eventId = "E-" + std::to_string(100000 + i);
    e.eventTitle = "Spring tide " + std::to_string(i);
    e.eventContent = "Bring the tide table";
    e.timeStampGenerate = "2026-03-10 08:00:00";
    e.eventStartDateYear = 2026;
    e.eventStartDateMonth = 1 + i % 12;
    e.eventStartDateDay = 1 + i % 28;
    e.eventRepeatOrNot = i % 2 == 0;
    e.eventType = i % 5;
    e.eventDateWhenEveryWeek = {0x62, 0x70, 0x6c, 0x69, 0x73, 0x74};
    e.eventNotiOrNot = true;
    e.eventNotiId = e.eventId + "@@n";
    e.eventColorString = "colorForUserSelection03";
    return e;
}

struct Figures {
    double seconds = 0;
    double requestsPerRecord = 0;
    double pauseSeconds = 0;
    bool ok = false;
};

class Bench {
public:
    bool start() {
        if (!apache_.start()) {
            return false;
        }
        setMainQueue(std::make_shared<QtMainQueue>(QCoreApplication::instance()));
        setCloudService(std::make_shared<WebDavCloudService>());
        CloudAccount account;
        account.setServerAddress(apache_.address());
        account.setUserName(QString::fromUtf8(kUser.name));
        account.keepPasswordInMemory(QString::fromUtf8(kUser.password));
        return true;
    }

    Figures backup(int count) {
        emptyZones();
        const fs::path path = freshStore();
        auto store = Store::open(path);
        store.write([&] {
            for (int i = 0; i < count; ++i) {
                const auto event = benchEvent(i);
                store.add(event);
                store.add(memoDataForNotiObject{"M-" + std::to_string(i), event.eventId,
                                                "2026-03-10 / 08:00", "Memo", "Body", 0, "", ""});
            }
        });
        addEditAndDelDataAtCloud transfer;
        Figures figures;
        transfer.pauseAfterFullBatch = [&](std::chrono::milliseconds pause) {
            figures.pauseSeconds += std::chrono::duration<double>(pause).count();
        };
        apache_.takeRequestCount();
        QElapsedTimer timer;
        timer.start();
        const auto outcome = transfer.uploadAllDataToCloud().wait();
        figures.seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
        figures.ok = !outcome.firstError && outcome.recordsWritten == std::size_t(2 * count);
        if (outcome.firstError) {
            std::fprintf(stderr, "backup: %s\n", outcome.firstError->message.c_str());
        }
        figures.requestsPerRecord = settledRequests() / (2.0 * count);
        return figures;
    }

    /// Restores into an empty store, with the cloud switch as given (on: each event goes back up
    /// as it is written, as in the app).
    Figures restore(int count, bool switchOn) {
        const fs::path path = freshStore();
        cloudKitFunc().cloudkitFuncStatus = switchOn;
        std::atomic<int> finished{0};
        std::atomic<std::size_t> read{0};
        QEventLoop loop;
        auto report = [&](const CloudProgress& p) {
            if (p.finished) {
                read += p.done;
                if (++finished == 2) {
                    QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
                }
            }
        };
        apache_.takeRequestCount();
        QElapsedTimer timer;
        timer.start();
        addEditAndDelDataAtCloud transfer;
        transfer.downloadAllMemosFromCloud(report);
        transfer.downloadAllEventsFromCloud(report);
        loop.exec();
        Figures figures;
        figures.seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
        figures.requestsPerRecord = settledRequests() / (2.0 * count);
        cloudKitFunc().cloudkitFuncStatus = false;
        const auto store = Store::open(path);
        figures.ok = read == std::size_t(2 * count) &&
                     store.objects<eventInfo>().size() == std::size_t(count) &&
                     store.objects<memoDataForNotiObject>().size() == std::size_t(count);
        return figures;
    }

private:
    fs::path freshStore() {
        const fs::path path = storage_.root() / "stores" / (std::to_string(++stores_) + ".sqlite");
        setDefaultStorePath(path);
        return path;
    }
    void emptyZones() {
        for (const char* zone : {"eventZone", "memoZone"}) {
            QDir(QStringLiteral("%1/%2/%3").arg(apache_.davRoot(), kCloudContainerName, zone))
                .removeRecursively();
            std::promise<void> made;
            cloudService().saveZone(zone, [&](std::optional<CloudError>) { made.set_value(); });
            made.get_future().wait();
        }
    }
    /// The requests Apache answered since the last count, once no more come in (sends that the
    /// operations started without waiting for them included).
    int settledRequests() {
        int total = apache_.takeRequestCount();
        for (int quiet = 0; quiet < 3;) {
            QEventLoop wait;
            QTimer::singleShot(100, &wait, &QEventLoop::quit);
            wait.exec();
            const int more = apache_.takeRequestCount();
            total += more;
            quiet = more == 0 ? quiet + 1 : 0;
        }
        return total;
    }

    IsolatedStorage storage_;
    ApacheDav apache_{{kUser}};
    int stores_ = 0;
};

void print(const char* what, int count, const Figures& f) {
    std::printf("%s N=%d (+%d memos): %.2f s, %.2f requests per record%s%s\n", what, count, count,
                f.seconds, f.requestsPerRecord,
                f.pauseSeconds > 0
                    ? (", + " + std::to_string(int(f.pauseSeconds)) + " s of batch pauses").c_str()
                    : "",
                f.ok ? "" : " FAILED");
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    std::vector<int> sizes{1000, 10000};
    bool withSwitchOn = false;
    for (int i = 1; i < argc; ++i) {
        const std::string arg = argv[i];
        if (arg == "--events" && i + 1 < argc) {
            sizes = {std::atoi(argv[++i])};
        } else if (arg == "--switch-on") {
            withSwitchOn = true;
        } else {
            std::fprintf(stderr, "Usage: tidemark-cloud-bench [--events N] [--switch-on]\n");
            return 2;
        }
    }
    Bench bench;
    if (!bench.start()) {
        std::fprintf(stderr, "tidemark-cloud-bench: Apache can't be started\n");
        return 1;
    }
    std::printf("# tidemark-cloud-bench: Apache httpd with mod_dav on loopback, events with a memo "
                "each\n");
    std::vector<Figures> backups, restores, restoresOn;
    bool ok = true;
    for (const int n : sizes) {
        backups.push_back(bench.backup(n));
        print("backup", n, backups.back());
        restores.push_back(bench.restore(n, false));
        print("restore, switch off", n, restores.back());
        if (withSwitchOn) {
            restoresOn.push_back(bench.restore(n, true));
            print("restore, switch on", n, restoresOn.back());
        }
        ok = ok && backups.back().ok && restores.back().ok;
    }
    if (sizes.size() == 2) {
        std::printf("ratio %d/%d: backup %.1fx, restore %.1fx (records %.0fx)\n", sizes[1],
                    sizes[0], backups[1].seconds / backups[0].seconds,
                    restores[1].seconds / restores[0].seconds, double(sizes[1]) / sizes[0]);
    }
    setCloudService(nullptr);
    setMainQueue(nullptr);
    return ok ? 0 : 1;
}
