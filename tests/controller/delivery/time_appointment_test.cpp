#include "controller/delivery/time_appointment.h"

#include <gtest/gtest.h>

namespace lamp::controller::test {
namespace {

using namespace std::chrono_literals;

class TimeAppointmentTest : public testing::Test {
 protected:
  TimeAppointmentTest() { settings.timeServer = "127.0.0.1"; }

  const TimeAppointment::Moment start{1000h};
  DeliverySettings settings;
  TimeAppointment appointment;
};

TEST_F(TimeAppointmentTest, IsDueAtTheStartAndEveryHour) {
  EXPECT_TRUE(appointment.due(settings, start));
  appointment.kept(settings, true, start);
  EXPECT_FALSE(appointment.due(settings, start + 60min - 1s));
  EXPECT_TRUE(appointment.due(settings, start + 60min));
}

TEST_F(TimeAppointmentTest, ComesSoonerAfterAQuestionWithoutAnswer) {
  appointment.kept(settings, false, start);
  EXPECT_FALSE(appointment.due(settings, start + 14s));
  EXPECT_TRUE(appointment.due(settings, start + 15s));
}

TEST_F(TimeAppointmentTest, IsDueAtOnceWhenTheSettingsChange) {
  appointment.kept(settings, true, start);
  settings.deviation = 30s;
  EXPECT_TRUE(appointment.due(settings, start + 1s));
  appointment.kept(settings, true, start + 1s);
  EXPECT_FALSE(appointment.due(settings, start + 2s));
  settings.timeServer = "127.0.0.2";
  EXPECT_TRUE(appointment.due(settings, start + 2s));
}

TEST_F(TimeAppointmentTest, IsNeverDueWithoutAServer) {
  settings.timeServer.clear();
  EXPECT_FALSE(appointment.due(settings, start + 1000h));
}

}  // namespace
}  // namespace lamp::controller::test
