#include "platform/NotificationCenter.h"

#include <QCoreApplication>
#include <QThread>

#include <thread>

#include <gtest/gtest.h>

using namespace brivane;
using namespace Qt::StringLiterals;

TEST(NotificationCenter, ReachesOnlyLivingReceiversOfTheName)
{
    NotificationCenter center;
    int heard = 0;
    auto receiver = std::make_unique<QObject>();
    center.subscribe(u"diskSpaceChanged"_s, receiver.get(), [&] { ++heard; });
    center.post(u"rescan"_s);
    EXPECT_EQ(heard, 0);
    center.post(u"diskSpaceChanged"_s);
    EXPECT_EQ(heard, 1);
    receiver.reset();
    center.post(u"diskSpaceChanged"_s);
    EXPECT_EQ(heard, 1);
}

TEST(NotificationCenter, APostFromAWorkerArrivesOnTheReceiversThread)
{
    NotificationCenter center;
    QObject receiver;
    QThread* heardOn = nullptr;
    center.subscribe(u"diskSpaceChanged"_s, &receiver, [&] { heardOn = QThread::currentThread(); });
    std::thread([&] { center.post(u"diskSpaceChanged"_s); }).join();
    EXPECT_EQ(heardOn, nullptr);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(heardOn, receiver.thread());
}
