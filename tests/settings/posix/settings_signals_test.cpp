// The settings file while signals come in.
#include "tests/settings/support/settings_folders.h"

#include <sys/time.h>

#include <csignal>

using namespace ColorSystem;
using namespace std::chrono_literals;

namespace {

using SettingsSignalsTest = tests::SettingsFolders;

TEST_F(SettingsSignalsTest, SignalsInterruptNeitherSavingNorWatching)
{
  Settings();
  struct sigaction action = {}, before = {};
  action.sa_handler = [](int) {};
  ::sigaction(SIGALRM, &action, &before);
  const itimerval often = {{0, 500}, {0, 500}};
  ::setitimer(ITIMER_REAL, &often, nullptr);
  for (int i = 0; i < 30; ++i)
    EXPECT_TRUE(Settings().SetApplicationColorSettings(ColorSettings(L"Signals " + std::to_wstring(i))));
  sigset_t alarm = {}, old = {};
  ::sigemptyset(&alarm);
  ::sigaddset(&alarm, SIGALRM);
  ::pthread_sigmask(SIG_BLOCK, &alarm, &old); // now the watch's thread gets them
  std::this_thread::sleep_for(200ms);
  const std::string outside = tests::Replaced(tests::TextOf(file), "<Name>Signals 29<", "<Name>Outside<");
  tests::WriteBytes(file + ".outside", tests::BytesOf(outside));
  std::filesystem::rename(file + ".outside", file);
  EXPECT_TRUE(tests::Within(2s, [] { return InForce().GetName() == L"Outside"; }));
  ::pthread_sigmask(SIG_SETMASK, &old, nullptr);
  const itimerval never = {};
  ::setitimer(ITIMER_REAL, &never, nullptr);
  ::sigaction(SIGALRM, &before, nullptr);
}

} // namespace
