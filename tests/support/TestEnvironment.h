#pragma once

#include "view/Environment.h"

#include <QTemporaryDir>

#include <vector>

/// A clock whose date changes only by `set()`, and whose monotonic time only by `advance()`.
class TestClock : public Clock {
 public:
  [[nodiscard]] QDateTime now() const override { return m_now; }
  [[nodiscard]] QTimeZone localZone() const override { return m_zone; }
  void set(const QDateTime &now) { m_now = now.toUTC(); }
  [[nodiscard]] std::chrono::milliseconds monotonic() const override { return m_monotonic; }
  void advance(std::chrono::milliseconds time) { m_monotonic += time; }
  void setZone(const QTimeZone &zone) { m_zone = zone; }

 private:
  QDateTime m_now{QDate(2026, 3, 2), QTime(8, 12, 5), QTimeZone::utc()};
  QTimeZone m_zone{"Europe/Athens"};
  std::chrono::milliseconds m_monotonic{};
};

/// Records the sounds that are played.
class TestSoundPlayer : public SoundPlayer {
 public:
  void playSystemSound(int identifier) override { m_played.push_back(identifier); }
  [[nodiscard]] const std::vector<int> &played() const { return m_played; }

 private:
  std::vector<int> m_played;
};

/// Records email drafts, and accepts or rejects all of them.
class TestMailComposer : public MailComposer {
 public:
  [[nodiscard]] bool canSendMail() const override { return m_canSendMail; }
  bool compose(const MailDraft &draft) override {
    m_drafts.push_back(draft);
    return m_acceptsMail;
  }
  void setCanSendMail(bool can) { m_canSendMail = can; }
  void setAcceptsMail(bool accepts) { m_acceptsMail = accepts; }
  [[nodiscard]] const std::vector<MailDraft> &drafts() const { return m_drafts; }

 private:
  bool m_canSendMail = true;
  bool m_acceptsMail = true;
  std::vector<MailDraft> m_drafts;
};

/// Records whether the lock is held.
class TestWakeLock : public WakeLock {
 public:
  void acquire() override { m_isHeld = true; }
  void release() override { m_isHeld = false; }
  [[nodiscard]] bool isHeld() const { return m_isHeld; }

 private:
  bool m_isHeld = false;
};

/// An environment in a temporary folder. Tests control its clock, sounds, mail and wake lock; its
/// HTTP client is the real one.
class TestEnvironment {
 public:
  explicit TestEnvironment(const PickingRules &rules = {});

  Environment environment;
  // Owned by the environment.
  TestClock *clock;
  TestSoundPlayer *sounds;
  TestMailComposer *mail;
  TestWakeLock *wakeLock;

  [[nodiscard]] QString storePath() const {
    return environment.folders.documents() + QStringLiteral("/QIR_Pick.sqlite");
  }
  /// Returns the topmost alert, or an empty one if there is none.
  [[nodiscard]] AlertView topAlert() const;
  /// The titles of all alerts, oldest first.
  [[nodiscard]] QStringList alertTitles() const;
  /// Touches button `index` of the topmost alert.
  void answerTopAlert(int index);

 private:
  QTemporaryDir m_home;
};
