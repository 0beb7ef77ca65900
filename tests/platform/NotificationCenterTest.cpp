#include "platform/NotificationCenter.h"

#include <QCoreApplication>
#include <QThread>

#include <thread>

#include <gtest/gtest.h>

using namespace brivane;
using namespace Qt::StringLiterals;

TEST(NotificationCenter, APostReachesLivingReceiversOfItsNameOnTheirThread)
{
    NotificationCenter center;
    QList<QThread*> heardOn;
    auto receiver = std::make_unique<QObject>();
    center.subscribe(u"one"_s, receiver.get(), [&] { heardOn += QThread::currentThread(); });
    center.post(u"other"_s);
    std::thread([&] { center.post(u"one"_s); }).join();
    EXPECT_TRUE(heardOn.isEmpty());
    QCoreApplication::sendPostedEvents();
    center.post(u"one"_s);
    receiver.reset();
    center.post(u"one"_s);
    EXPECT_EQ(heardOn, QList(2, QThread::currentThread()));
}
