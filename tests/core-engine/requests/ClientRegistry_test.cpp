#include "core-engine/requests/ClientRegistry.h"

#include <gtest/gtest.h>

namespace vorn::engine::test {
namespace {

using Clients = std::vector<Client>;

const Client configurator{":1.5", "ConfiguratorPort", 273};
const Client tool{":1.6", "ToolPort", 0};

class ClientRegistryTest : public testing::Test {
 protected:
  ClientRegistry registry;
};

TEST_F(ClientRegistryTest, HoldsThoseWhoRegistered) {
  registry.add(configurator);
  registry.add(tool);
  EXPECT_EQ(registry.present(), (Clients{configurator, tool}));
}

TEST_F(ClientRegistryTest, HoldsTheLatestRegistrationOfAPort) {
  registry.add(configurator);
  const Client restarted{":1.9", "ConfiguratorPort", 0};
  registry.add(restarted);
  EXPECT_EQ(registry.present(), Clients{restarted});
}

TEST_F(ClientRegistryTest, KnowsWhoShowsDefaultsUntilItReadsTheSettings) {
  registry.add(configurator);
  registry.add({":1.6", "ToolPort", 0, true});
  EXPECT_FALSE(registry.showsDefaults("ConfiguratorPort"));
  EXPECT_TRUE(registry.showsDefaults("ToolPort"));
  EXPECT_FALSE(registry.showsDefaults("OtherPort"));
  EXPECT_FALSE(registry.showsDefaults(""));
  registry.readsSettings("OtherPort");
  EXPECT_TRUE(registry.showsDefaults("ToolPort"));
  registry.readsSettings("ToolPort");
  EXPECT_FALSE(registry.showsDefaults("ToolPort"));
}

TEST_F(ClientRegistryTest, ForgetsThoseWhoReleased) {
  registry.add(configurator);
  registry.add(tool);
  EXPECT_EQ(registry.release(":1.5"), std::vector<std::string>{"ConfiguratorPort"});
  EXPECT_EQ(registry.release(":1.5"), std::vector<std::string>());
  EXPECT_EQ(registry.present(), Clients{tool});
}

TEST_F(ClientRegistryTest, ForgetsThoseWhosePortIsGone) {
  registry.add(configurator);
  registry.add(tool);
  registry.portLost("ConfiguratorPort");
  EXPECT_EQ(registry.present(), Clients{tool});
  registry.portLost("ConfiguratorPort");
  EXPECT_EQ(registry.present(), Clients{tool});
}

TEST_F(ClientRegistryTest, LetsTheOldestGoWhenThereAreTooMany) {
  Clients all;
  for (std::size_t number = 0; number <= ClientRegistry::maximumClients; ++number) {
    const Client client{":1." + std::to_string(number), "Port" + std::to_string(number), 273};
    registry.add(client);
    all.push_back(client);
  }
  all.erase(all.begin());
  EXPECT_EQ(registry.present(), all);
}

TEST_F(ClientRegistryTest, HasRoomAgainWhenPortsAreGone) {
  registry.add(tool);
  for (std::size_t number = 1; number < ClientRegistry::maximumClients; ++number) {
    registry.add({":2", "Gone" + std::to_string(number), 273});
  }
  for (std::size_t number = 1; number < ClientRegistry::maximumClients; ++number) {
    registry.portLost("Gone" + std::to_string(number));
  }
  registry.add(configurator);
  EXPECT_EQ(registry.present(), (Clients{tool, configurator}));
}

}  // namespace
}  // namespace vorn::engine::test
