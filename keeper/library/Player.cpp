#include "keeper/library/Player.h"

#include "platform/Platform.h"

void Player::start(const Item &next) {
  item = next;
  now = State::Playing;
  base = 0.0;
  since = platform().clock->now();
}

void Player::pause() {
  if (now != State::Playing) return;
  base = position();
  now = State::Paused;
}

void Player::resume() {
  if (now != State::Paused) return;
  now = State::Playing;
  since = platform().clock->now();
}

void Player::stop() {
  now = State::Stopped;
  item = {};
  base = 0.0;
}

double Player::elapsed() const {
  // A clock that was set back does not take the music back.
  return now == State::Playing ? base + std::max(0.0, platform().clock->now().seconds - since.seconds) : base;
}

double Player::position() const {
  const double seconds = elapsed();
  return item.seconds > 0 ? std::min(seconds, item.seconds) : seconds;
}

void Player::setPosition(double seconds) {
  if (now == State::Stopped) return;
  base = std::max(0.0, item.seconds > 0 ? std::min(seconds, item.seconds) : seconds);
  since = platform().clock->now();
}

bool Player::isAtEnd() const {
  return now == State::Playing && item.seconds > 0 && elapsed() >= item.seconds;
}

void Player::setVolume(int volume) {
  loudness = std::clamp(volume, 0, 100);
}
