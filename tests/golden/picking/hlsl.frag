uniform sampler2D albedoMap : register(s0);
uniform float alphaReference;
uniform float4 objectColor;
struct FS_INPUT{
	float2 oUV : TEXCOORD2;
};
struct FS_OUTPUT{
	float4 oColor : COLOR0;
};
FS_OUTPUT main(FS_INPUT input){ 
	float2 ioUV = input.oUV;
	FS_OUTPUT output;
	float4 albedo = tex2D(albedoMap,ioUV);
	if(albedo.w<alphaReference ) {
		discard; 
	} 
	output.oColor = objectColor;
	return output;
}
