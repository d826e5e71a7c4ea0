uniform float4x4 bones[24];
uniform float4x4 world;
uniform float4x4 worldViewProj;
uniform float4 uvTransform;
struct VS_INPUT{
	float3 position : POSITION;
	float3 normal : NORMAL;
	float4 blendIndices : BLENDINDICES;
	float4 blendWeights : BLENDWEIGHT;
	float2 uv : TEXCOORD0;
};
struct VS_OUTPUT{
	float4 oProjPos : POSITION;
	float3 oWorldPos : TEXCOORD0;
	float3 oNormal : TEXCOORD1;
	float2 oUV : TEXCOORD2;
};
VS_OUTPUT main(VS_INPUT input){ 
	float3 iposition = input.position;
	float3 inormal = input.normal;
	float4 iblendIndices = input.blendIndices;
	float4 iblendWeights = input.blendWeights;
	float2 iuv = input.uv;
	VS_OUTPUT output;
	float4 restPosition = float4(iposition,1.0);
	float4 restNormal = float4(inormal,0.0);
	float4 localPosition = float4(0.0,0.0,0.0,0.0);
	float4 localNormal = float4(0.0,0.0,0.0,0.0);
	localPosition += mul(restPosition,bones[int(iblendIndices.r)])*iblendWeights.r;
	localNormal += mul(restNormal,bones[int(iblendIndices.r)])*iblendWeights.r;
	localPosition += mul(restPosition,bones[int(iblendIndices.g)])*iblendWeights.g;
	localNormal += mul(restNormal,bones[int(iblendIndices.g)])*iblendWeights.g;
	localPosition += mul(restPosition,bones[int(iblendIndices.b)])*iblendWeights.b;
	localNormal += mul(restNormal,bones[int(iblendIndices.b)])*iblendWeights.b;
	localPosition.w = 1.0;
	output.oProjPos = mul(localPosition,worldViewProj);
	float4 worldPosition = mul(localPosition,world);
	float4 worldNormal = mul(localNormal,world);
	output.oWorldPos = worldPosition.xyz;
	output.oNormal = worldNormal.xyz;
	output.oUV = iuv;
	output.oUV = iuv*uvTransform.xy+uvTransform.zw;
	return output;
}
