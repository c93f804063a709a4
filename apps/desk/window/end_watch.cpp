// Ends the program in order when the system asks it to.
#include "desk/window/end_watch.h"

#include <utility>

namespace fenmark::desk {

EndWatch::EndWatch(std::function<void()> end) : end_(std::move(end)) {
    if (signals_.descriptor() < 0) {
        return;
    }
    notifier_ = std::make_unique<QSocketNotifier>(signals_.descriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
        notifier_->setEnabled(false);
        end_();
    });
}

} // namespace fenmark::desk
