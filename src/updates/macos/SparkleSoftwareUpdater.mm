#include "updates/macos/SparkleSoftwareUpdater.h"

#import <Foundation/Foundation.h>
#import <Sparkle/Sparkle.h>

#include <functional>
#include <utility>

/// Watches the framework's flag and hands each new value on, on the main thread.
@interface VantrelCanCheckObserver : NSObject
- (instancetype)initWithUpdater:(SPUUpdater *)updater handler:(std::function<void(bool)>)handler;
- (void)stop;
@end

@implementation VantrelCanCheckObserver {
    SPUUpdater *_updater;
    std::function<void(bool)> _handler;
}

static NSString *const canCheckKey = @"canCheckForUpdates";

- (instancetype)initWithUpdater:(SPUUpdater *)updater handler:(std::function<void(bool)>)handler
{
    if ((self = [super init])) {
        _updater = updater;
        _handler = std::move(handler);
        [_updater addObserver:self
                   forKeyPath:canCheckKey
                      options:NSKeyValueObservingOptionNew
                      context:nullptr];
    }
    return self;
}

- (void)observeValueForKeyPath:(NSString *)keyPath
                      ofObject:(id)object
                        change:(NSDictionary<NSKeyValueChangeKey, id> *)change
                       context:(void *)context
{
    const bool canCheck = [change[NSKeyValueChangeNewKey] boolValue];
    dispatch_async(dispatch_get_main_queue(), ^{
      if (self->_handler) {
          self->_handler(canCheck);
      }
    });
}

- (void)stop
{
    [_updater removeObserver:self forKeyPath:canCheckKey];
    _handler = nullptr;
}
@end

namespace vantrel {

struct SparkleSoftwareUpdater::Framework
{
    SPUStandardUpdaterController *controller = nil;
    VantrelCanCheckObserver *canCheckObservation = nil;
};

SparkleSoftwareUpdater::SparkleSoftwareUpdater(QObject *parent)
    : SoftwareUpdating(parent)
    , m_framework(std::make_unique<Framework>())
{
    m_framework->controller = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                            updaterDelegate:nil
                                                                         userDriverDelegate:nil];
    SPUUpdater *const updater = m_framework->controller.updater;
    m_canCheckForUpdates = updater.canCheckForUpdates;
    m_framework->canCheckObservation = [[VantrelCanCheckObserver alloc]
        initWithUpdater:updater
                handler:[this](bool canCheck) { takeCanCheckForUpdates(canCheck); }];
}

SparkleSoftwareUpdater::~SparkleSoftwareUpdater()
{
    [m_framework->canCheckObservation stop];
}

void SparkleSoftwareUpdater::checkForUpdates()
{
    [m_framework->controller checkForUpdates:nil];
}

void SparkleSoftwareUpdater::takeCanCheckForUpdates(bool canCheck)
{
    if (canCheck != m_canCheckForUpdates) {
        m_canCheckForUpdates = canCheck;
        Q_EMIT canCheckForUpdatesChanged();
    }
}

} // namespace vantrel
