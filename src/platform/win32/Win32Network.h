#pragma once
// The account and feedback objects over WinHTTP: TLS only, the server's certificate
// checked by the system (nothing is ever ignored), redirects never followed, and an
// address that is not https:// refused before any connection is made.
#include "platform/ClosedObjects.h"

namespace platform {

class Win32NetworkObjects : public INetworkObjects {
 public:
  std::unique_ptr<ILoginObject> CreateLoginObject(const ServiceEndpoints& endpoints) override;
  std::unique_ptr<IHttpObject> CreateHttpObject(const ServiceEndpoints& endpoints) override;
};

}  // namespace platform
