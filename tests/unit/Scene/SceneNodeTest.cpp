#include "Scene/SceneNode.h"

#include "Scene/DrawContext.h"
#include "tests/unit/Scene/TestNodes.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using namespace Tamborel;

namespace {

using Nodes = std::vector<std::shared_ptr<SceneNode>>;

std::shared_ptr<SceneNode> Child(SceneNode& parent) {
    auto child = std::make_shared<SceneNode>();
    parent.AddChild(child);
    return child;
}

/// Writes down each walk that comes by.
class WalkedNode : public SceneNode {
public:
    WalkedNode(std::string name, std::string& walk) : name_(std::move(name)), walk_(walk) {}

    void Update(float seconds) override {
        walk_ += "U" + name_ + ' ';
        seconds_ = seconds;
        SceneNode::Update(seconds);
    }
    void Animate(float seconds) override {
        walk_ += "A" + name_ + ' ';
        SceneNode::Animate(seconds);
    }
    void Prepare(DrawContext& context) override {
        walk_ += "P" + name_ + ' ';
        SceneNode::Prepare(context);
    }
    void Draw(DrawContext& context) override {
        walk_ += "D" + name_ + ' ';
        SceneNode::Draw(context);
    }

    float Seconds() const { return seconds_; }

private:
    std::string name_;
    std::string& walk_;
    float seconds_ = 0;
};

/// root -> (a -> a1, b), painted nowhere.
class SceneNodeWalk : public testing::Test {
protected:
    SceneNodeWalk() {
        root->AddChild(a);
        a->AddChild(a1);
        root->AddChild(b);
    }

    std::string walk;
    std::shared_ptr<WalkedNode> root = std::make_shared<WalkedNode>("root", walk);
    std::shared_ptr<WalkedNode> a = std::make_shared<WalkedNode>("a", walk);
    std::shared_ptr<WalkedNode> a1 = std::make_shared<WalkedNode>("a1", walk);
    std::shared_ptr<WalkedNode> b = std::make_shared<WalkedNode>("b", walk);
    BrushCache cache;
    DrawContext context{nullptr, &cache, 1};
};

}  // namespace

TEST(SceneNode, AddingItselfChangesNothing) {
    const auto node = std::make_shared<SceneNode>();
    node->AddChild(node);
    EXPECT_TRUE(node->children.empty());
    EXPECT_EQ(node->parent, nullptr);
    EXPECT_EQ(node.use_count(), 1);
}

TEST(SceneNode, AddingNullChangesNothing) {
    SceneNode node;
    const auto child = Child(node);
    node.AddChild(nullptr);
    EXPECT_EQ(node.children, Nodes{child});
}

TEST(SceneNode, AnAddedChildIsOwnedAndKnowsItsParent) {
    SceneNode node;
    const auto child = Child(node);
    EXPECT_EQ(child->parent, &node);
    EXPECT_EQ(child.use_count(), 2);
}

TEST(SceneNode, AddingAChildAgainMovesItToTheEnd) {
    SceneNode node;
    const auto first = Child(node);
    const auto second = Child(node);
    const auto third = Child(node);
    node.AddChild(first);
    EXPECT_EQ(node.children, (Nodes{second, third, first}));
    EXPECT_EQ(first->parent, &node);
}

TEST(SceneNode, AChildOfAnotherParentLeavesItAndItsSiblingsKeepTheirOrder) {
    SceneNode before;
    SceneNode after;
    const auto first = Child(before);
    const auto moved = Child(before);
    const auto third = Child(before);
    after.AddChild(moved);
    EXPECT_EQ(before.children, (Nodes{first, third}));
    EXPECT_EQ(after.children, Nodes{moved});
    EXPECT_EQ(moved->parent, &after);
}

TEST(SceneNode, AChildWhoseParentDoesNotListItIsAddedAllTheSame) {
    SceneNode stranger;
    SceneNode node;
    const auto sibling = Child(stranger);
    const auto child = std::make_shared<SceneNode>();
    child->parent = &stranger;
    node.AddChild(child);
    EXPECT_EQ(stranger.children, Nodes{sibling});
    EXPECT_EQ(node.children, Nodes{child});
    EXPECT_EQ(child->parent, &node);
}

TEST(SceneNode, RemovingAChildDetachesItAndKeepsTheOrderOfTheRest) {
    SceneNode node;
    const auto first = Child(node);
    const auto second = Child(node);
    const auto third = Child(node);
    node.RemoveChild(second.get());
    EXPECT_EQ(node.children, (Nodes{first, third}));
    EXPECT_EQ(second->parent, nullptr);
    EXPECT_EQ(second.use_count(), 1);
}

TEST(SceneNode, RemovingTheLastReferenceToAChildEndsIt) {
    SceneNode node;
    const std::weak_ptr<SceneNode> child = Child(node);
    node.RemoveChild(child.lock().get());
    EXPECT_TRUE(child.expired());
}

TEST(SceneNode, RemovingANodeThatIsNoChildChangesNothingAndItsParentStays) {
    SceneNode node;
    SceneNode other;
    const auto child = Child(node);
    const auto foreign = Child(other);
    node.RemoveChild(foreign.get());
    node.RemoveChild(nullptr);
    EXPECT_EQ(node.children, Nodes{child});
    EXPECT_EQ(other.children, Nodes{foreign});
    EXPECT_EQ(foreign->parent, &other);
}

TEST(SceneNode, AChildKeptAliveKeepsItsLinkWhenTheParentEnds) {
    auto parent = std::make_shared<SceneNode>();
    const SceneNode* const address = parent.get();
    const auto child = Child(*parent);
    parent.reset();
    EXPECT_EQ(child->parent, address);
    EXPECT_EQ(child.use_count(), 1);
}

TEST(SceneNode, AnUpdatedWorldTransformAppliesTheLocalOneFirst) {
    SceneNode root;
    root.localTransform = {2, 0, 0, 2, 0, 0};
    const auto child = Child(root);
    child->localTransform = Translation(5, 7);
    const auto grandchild = Child(*child);
    grandchild->localTransform = Translation(1, 1);
    EXPECT_EQ(child->worldTransform, Matrix3x2{}) << "until the first update";
    root.Update(0);
    EXPECT_EQ(root.worldTransform, root.localTransform);
    EXPECT_EQ(child->worldTransform, (Matrix3x2{2, 0, 0, 2, 10, 14}));
    EXPECT_EQ(grandchild->worldTransform, (Matrix3x2{2, 0, 0, 2, 12, 16}));
}

TEST_F(SceneNodeWalk, UpdateRunsParentsFirstInOrderAndPassesTheTimeOn) {
    root->Update(0.25F);
    EXPECT_EQ(walk, "Uroot Ua Ua1 Ub ");
    EXPECT_EQ(a1->Seconds(), 0.25F);
}

TEST_F(SceneNodeWalk, PrepareAndDrawRunInPaintOrder) {
    root->Prepare(context);
    root->Draw(context);
    EXPECT_EQ(walk, "Proot Pa Pa1 Pb Droot Da Da1 Db ");
}

TEST_F(SceneNodeWalk, TheChildrenOfAHiddenNodeAreNotPreparedOrPaintedButStayCurrent) {
    a->visible = false;
    a->localTransform = Translation(3, 4);
    root->Update(0);
    root->Animate(0);
    root->Prepare(context);
    root->Draw(context);
    EXPECT_EQ(walk, "Uroot Ua Ua1 Ub Aroot Aa Aa1 Ab Proot Pb Droot Db ");
    EXPECT_EQ(a1->worldTransform, Translation(3, 4));
}

TEST_F(SceneNodeWalk, VisibilityOfTheNodeItselfIsItsParentsConcern) {
    root->visible = false;
    root->Draw(context);
    EXPECT_EQ(walk, "Droot Da Da1 Db ");
}
