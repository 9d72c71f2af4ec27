#pragma once

#include "desktop/Pictures.h"
#include "host/Model.h"

#include <QFrame>

class QLabel;

namespace desktop {

/// The host's banner: a picture with a caption, until it is dismissed or another comes.
class Banner final : public QFrame {
public:
    explicit Banner(const Pictures& pictures);
    void Draw(const arvon::host::model::Banner& banner);

private:
    const Pictures& pictures_;
    QLabel* picture_;
    QLabel* caption_;
    arvon::host::model::Banner shown_;
    bool dismissed_ = false; // what is shown
};

} // namespace desktop
