// trustcert add|remove FILE.der: puts a DER certificate into, or takes it out of, the
// local machine's Root store of the Wine prefix it runs in. Only the network contract
// uses it, for the certificate it made for its own run.
#include <windows.h>
#include <wincrypt.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

int wmain(int argc, wchar_t** argv) {
  if (argc != 3) {
    std::fputs("usage: trustcert add|remove FILE.der\n", stderr);
    return 2;
  }
  const std::wstring verb = argv[1];
  std::ifstream in(argv[2], std::ios::binary);
  std::vector<BYTE> der((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  if (der.empty()) {
    std::fputs("trustcert: cannot read the certificate\n", stderr);
    return 1;
  }
  HCERTSTORE store =
      CertOpenStore(CERT_STORE_PROV_SYSTEM_W, 0, 0, CERT_SYSTEM_STORE_LOCAL_MACHINE, L"Root");
  if (store == nullptr) {
    std::fprintf(stderr, "trustcert: cannot open the Root store (%lu)\n", GetLastError());
    return 1;
  }
  int rc = 0;
  if (verb == L"add") {
    if (!CertAddEncodedCertificateToStore(store, X509_ASN_ENCODING, der.data(),
                                          static_cast<DWORD>(der.size()),
                                          CERT_STORE_ADD_REPLACE_EXISTING, nullptr)) {
      std::fprintf(stderr, "trustcert: cannot add (%lu)\n", GetLastError());
      rc = 1;
    }
  } else if (verb == L"remove") {
    PCCERT_CONTEXT cert =
        CertCreateCertificateContext(X509_ASN_ENCODING, der.data(), static_cast<DWORD>(der.size()));
    PCCERT_CONTEXT found = cert ? CertFindCertificateInStore(store, X509_ASN_ENCODING, 0,
                                                             CERT_FIND_EXISTING, cert, nullptr)
                                : nullptr;
    if (found == nullptr || !CertDeleteCertificateFromStore(found)) rc = 1;
    if (cert) CertFreeCertificateContext(cert);
  } else {
    rc = 2;
  }
  CertCloseStore(store, 0);
  return rc;
}
