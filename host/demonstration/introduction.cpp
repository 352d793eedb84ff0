#include "demonstration/introduction.h"

#include "demonstration/look.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSettings>
#include <QStandardPaths>

namespace kova {
namespace {

constexpr std::array sentences{Caption::FirstSentence, Caption::SecondSentence, Caption::ThirdSentence};
const QString Seen = QStringLiteral("introduction/seen");

QSettings userSettings() {
    return {QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + "/kova-host.ini",
            QSettings::IniFormat};
}

} // namespace

Introduction::Introduction() : understood_(new QPushButton), layout_(new QHBoxLayout(this)) {
    setObjectName("Introduction");
    for (QLabel*& sentence : sentences_) {
        sentence = new QLabel;
        sentence->setWordWrap(true);
        layout_->addWidget(sentence, 1);
    }
    understood_->setObjectName("Understood");
    layout_->addWidget(understood_);
    connect(understood_, &QPushButton::clicked, this, &Introduction::dismiss);
    if (userSettings().value(Seen).toBool())
        hide();
}

void Introduction::dismiss() {
    if (isHidden())
        return;
    hide();
    userSettings().setValue(Seen, true);
}

void Introduction::mouseReleaseEvent(QMouseEvent*) {
    dismiss();
}

void Introduction::setLanguage(std::int32_t id) {
    for (std::size_t i = 0; i < sentences_.size(); ++i)
        sentences_[i]->setText(QString("%1.  %2").arg(i + 1).arg(caption(sentences[i], id)));
    understood_->setText(caption(Caption::Understood, id));
}

void Introduction::setScale(double scale) {
    const auto px = [scale](double length) { return host_look::pixels(length, scale); };
    layout_->setContentsMargins(px(16), px(10), px(12), px(10));
    layout_->setSpacing(px(20));
}

} // namespace kova
